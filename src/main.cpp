#include <cstdlib>
#include <string>

#include "Application.h"
#include "Log.h"
#include "Options.h"

namespace
{

constexpr int failureStatus = -1;

// Returns the exit status, with the display closed again.
int runMenu(const char* iConfigPath)
{
    PEBBLETON::ApplicationC application(iConfigPath);
    if (!application.Init()) {
        PEBBLETON::Log(LOG_ERR, "Initialize the pebbleton instance failed. \n");
        return failureStatus;
    }
    return static_cast<int>(application.Run());
}

} // namespace

int main(int argc, char* argv[])
{
    PEBBLETON::SetLogLevel(LOG_INFO);
    openlog("pebbleton", LOG_PID | LOG_CONS | LOG_NDELAY, LOG_USER);

    std::string configurationPath;
    const bool chosen = PEBBLETON::ParseOptions(argc, argv, configurationPath);
    const int status = chosen ? runMenu(configurationPath.c_str()) : failureStatus;

    PEBBLETON::Log(LOG_INFO, "Exit the Pebbleton application with : %d", status);
    closelog();
    std::exit(status);
}
