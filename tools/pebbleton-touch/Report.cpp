#include "Report.h"

#include <cstdarg>
#include <cstdio>

#include "Log.h"

namespace PEBBLETON
{

void Report(int iPriority, const char* iFormat, ...)
{
    char text[1024];
    std::va_list arguments;
    va_start(arguments, iFormat);
    std::vsnprintf(text, sizeof text, iFormat, arguments);
    va_end(arguments);
    Log(iPriority, "%s", text);
    std::fprintf(stderr, "pebbleton-touch: %s\n", text);
}

} // namespace PEBBLETON
