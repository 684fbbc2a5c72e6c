#include "Child.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void become(char* const iCommand[])
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, stream);
    }
    execvp(iCommand[0], iCommand);
    _exit(127);
}

double milliseconds(const timeval& iTime)
{
    return static_cast<double>(iTime.tv_sec) * 1e3 + static_cast<double>(iTime.tv_usec) / 1e3;
}

} // namespace

pid_t start(char* const iCommand[])
{
    const pid_t child = fork();
    if (child == 0) {
        become(iCommand);
    }
    if (child < 0) { // no number to hand out: a signal to it would go to every process
        std::perror("fork");
        std::exit(EXIT_FAILURE);
    }
    return child;
}

Usage finish(pid_t iChild)
{
    int status = 0;
    rusage usage = {};
    wait4(iChild, &status, 0, &usage);
    return {milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss), status};
}

double quantile(std::vector<double> iValues, double iShare)
{
    const auto place = std::lround(iShare * static_cast<double>(iValues.size() - 1));
    std::nth_element(iValues.begin(), iValues.begin() + place, iValues.end());
    return iValues[static_cast<std::size_t>(place)];
}
