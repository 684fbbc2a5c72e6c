#include "Log.h"

#include <cstdarg>

namespace PEBBLETON
{

void SetLogLevel(int iLevel)
{
    setlogmask(LOG_UPTO(LOG_PRI(iLevel)));
}

void Log(int iPriority, const char* iFormat, ...)
{
    std::va_list arguments;
    va_start(arguments, iFormat);
    vsyslog(iPriority, iFormat, arguments);
    va_end(arguments);
}

} // namespace PEBBLETON
