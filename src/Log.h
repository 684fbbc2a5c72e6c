#ifndef PEBBLETON_LOG_H
#define PEBBLETON_LOG_H

#include <syslog.h>

namespace PEBBLETON
{

// Lets the priorities from 0 (LOG_EMERG) up to and including iLevel reach the system log. Only the three priority bits
// of iLevel count.
void SetLogLevel(int iLevel);

// Sends one message to the system log, with a bare priority (0 to 7). The text goes out as it is, line ends included. A
// text from elsewhere is an argument, never the format.
void Log(int iPriority, const char* iFormat, ...) __attribute__((format(printf, 2, 3)));

} // namespace PEBBLETON

// Wraps one DirectFB call without which there is no menu. On any result but DFB_OK it logs the place in the source and
// ends the process with DirectFB's own report of the call, worded exactly as it stands in the source, and DirectFB's
// own exit status.
//
// Two traps: a line break right after a parenthesis of the call would show as a blank in that report, and the local
// below must not share its name with anything in the call.
#define DIRECTFB_CHECK(iCall)                                                                                          \
    do {                                                                                                               \
        const DFBResult directfbCheckResult = (iCall);                                                                 \
        if (directfbCheckResult != DFB_OK) {                                                                           \
            PEBBLETON::Log(LOG_ERR, "%s <%d>:\n\t", __FILE__, __LINE__);                                               \
            DirectFBErrorFatal(#iCall, directfbCheckResult);                                                           \
        }                                                                                                              \
    } while (false)

#endif
