#include <syslog.h>

#include "Adapter.h"
#include "TouchOptions.h"

int main(int argc, char* argv[])
{
    // Not LOG_CONS: what matters goes to standard error anyway, and the console may be the menu's screen.
    openlog("pebbleton-touch", LOG_PID | LOG_NDELAY, LOG_USER);
    PEBBLETON::TouchOptions options;
    if (!PEBBLETON::ParseTouchOptions(argc, argv, options)) {
        return PEBBLETON::AdapterC::failed;
    }
    if (options.help) {
        PEBBLETON::PrintTouchHelp();
        return 0;
    }
    return PEBBLETON::AdapterC(options).Run();
}
