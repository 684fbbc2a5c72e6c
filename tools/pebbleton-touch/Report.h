#ifndef PEBBLETON_TOUCH_REPORT_H
#define PEBBLETON_TOUCH_REPORT_H

namespace PEBBLETON
{

// Says one line, without its end, in the system log at this priority and on standard error after the program's name.
void Report(int iPriority, const char* iFormat, ...) __attribute__((format(printf, 2, 3)));

} // namespace PEBBLETON

#endif
