#include "Child.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

#include "MessageFile.h"

namespace PEBBLETON
{

namespace
{

std::string readAll(int iFile)
{
    std::string result;
    std::array<char, 65536> buffer = {};
    for (;;) {
        const ssize_t count = read(iFile, buffer.data(), buffer.size());
        if (count > 0) {
            result.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return result;
        }
    }
}

} // namespace

ChildEnd runChild(const std::function<int(int iOutput)>& iWork)
{
    int ends[2] = {-1, -1};
    const MessageFileC messages;
    if (pipe(ends) != 0) {
        throw std::runtime_error("there is no file for the output of another process");
    }
    const pid_t child = fork();
    if (child == -1) {
        throw std::runtime_error("there can be no other process");
    }
    if (child == 0) {
        close(ends[0]);
        dup2(messages.GetFile(), STDERR_FILENO);
        dup2(messages.GetFile(), STDOUT_FILENO);
        const int status = iWork(ends[1]);
        std::fflush(nullptr);
        _exit(status);
    }
    close(ends[1]);
    ChildEnd end = {0, 0, readAll(ends[0]), {}};
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    end.status = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    end.messages = messages.GetLines();
    return end;
}

} // namespace PEBBLETON
