#include "Process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace PEBBLETON
{

namespace
{

constexpr int longestEnding = 2000; // milliseconds

} // namespace

ProcessC::ProcessC(const std::vector<std::string>& iWords, const Environment& iEnvironment, int iMessages, int iKept)
    : mId(-1), mEnded(false), mStatus(0)
{
    int report[2] = {-1, -1}; // closed by a program that starts, else it brings the reason
    if (pipe2(report, O_CLOEXEC) != 0 || (mId = fork()) == -1) {
        throw std::runtime_error("there can be no other process");
    }
    if (mId == 0) {
        if (iKept != -1) {
            fcntl(iKept, F_SETFD, 0);
        }
        Execute(iWords, iEnvironment, iMessages, report[1]);
    }
    close(report[1]);
    int error = 0;
    const bool failed = read(report[0], &error, sizeof(error)) == sizeof(error);
    close(report[0]);
    if (failed) {
        waitpid(mId, &mStatus, 0);
        throw std::runtime_error(iWords[0] + " cannot be run: " + std::strerror(error));
    }
}

ProcessC::~ProcessC()
{
    if (!mEnded) {
        // An X server that is killed leaves its socket behind.
        kill(mId, SIGTERM);
        if (!WaitForEnd(longestEnding)) {
            kill(mId, SIGKILL);
        }
        waitpid(mId, &mStatus, 0);
    }
}

const ProcessC& ProcessC::WaitForFirst(ProcessC& ioOne, ProcessC& ioOther)
{
    int status = 0;
    pid_t id = -1;
    do {
        id = waitpid(-1, &status, 0);
    } while (id != ioOne.mId && id != ioOther.mId);
    ProcessC& first = id == ioOne.mId ? ioOne : ioOther;
    first.mEnded = true;
    first.mStatus = status;
    return first;
}

int ProcessC::GetStatus() const
{
    return mStatus;
}

bool ProcessC::WaitForEnd(int iMilliseconds) const
{
    const int file = static_cast<int>(syscall(SYS_pidfd_open, mId, 0));
    if (file == -1) {
        return false;
    }
    struct pollfd ending = {file, POLLIN, 0};
    const bool ended = poll(&ending, 1, iMilliseconds) == 1;
    close(file);
    return ended;
}

void ProcessC::Execute(const std::vector<std::string>& iWords, const Environment& iEnvironment, int iMessages,
                       int iReport)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const auto& [name, value] : iEnvironment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    dup2(iMessages, STDOUT_FILENO);
    dup2(iMessages, STDERR_FILENO);
    std::vector<char*> words;
    words.reserve(iWords.size() + 1);
    for (const std::string& word : iWords) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    execvp(words[0], words.data());
    const int error = errno;
    const ssize_t written = write(iReport, &error, sizeof(error));
    _exit(written == sizeof(error) ? 127 : 126);
}

} // namespace PEBBLETON
