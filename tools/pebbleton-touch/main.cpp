#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

#include "Adapter.h"
#include "TouchOptions.h"

namespace
{

// Where a standard stream is closed, what is opened next would take its place, and be written to as such. The command
// finds the stream closed, as it was.
void fillStandardStreams()
{
    int filler = 0;
    do {
        filler = open("/dev/null", O_RDWR | O_CLOEXEC);
    } while (filler >= 0 && filler <= STDERR_FILENO);
    close(filler);
}

} // namespace

int main(int argc, char* argv[])
{
    fillStandardStreams();
    // Not LOG_CONS: what matters goes to standard error anyway, and the console may be the menu's screen.
    openlog("pebbleton-touch", LOG_PID | LOG_NDELAY, LOG_USER);
    PEBBLETON::TouchOptions options;
    if (!PEBBLETON::ParseTouchOptions(argc, argv, options)) {
        return PEBBLETON::AdapterC::failed;
    }
    if (options.help) {
        return PEBBLETON::PrintTouchHelp() ? 0 : PEBBLETON::AdapterC::failed;
    }
    if (options.version) {
        return PEBBLETON::printTouchVersion() ? 0 : PEBBLETON::AdapterC::failed;
    }
    return PEBBLETON::AdapterC(options).Run();
}
