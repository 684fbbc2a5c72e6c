#include "Command.h"

#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Log.h"
#include "Report.h"

namespace PEBBLETON
{

namespace
{

constexpr int handedOn[] = {SIGTERM, SIGINT, SIGHUP, SIGQUIT};

// As for a command that nohup or a shell's & has started.
bool isIgnored(int iSignal)
{
    struct sigaction action = {};
    return sigaction(iSignal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

CommandC::CommandC() : mFormerMask(), mFormerChild(), mFormerPipe(), mSignals(-1)
{
    // An ignored SIGCHLD would lose the exit status; a reader of our standard error that goes away is no reason to end.
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &action, &mFormerChild);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, &mFormerPipe);

    sigset_t awaited;
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGCHLD);
    sigaddset(&awaited, forget);
    for (const int signal : handedOn) {
        sigaddset(&awaited, signal);
    }
    sigprocmask(SIG_BLOCK, &awaited, &mFormerMask);
    mSignals = signalfd(-1, &awaited, SFD_NONBLOCK | SFD_CLOEXEC);
}

CommandC::~CommandC()
{
    if (mSignals >= 0) {
        close(mSignals);
    }
}

bool CommandC::Rest(std::chrono::milliseconds iTime)
{
    pollfd source = {mSignals, POLLIN, 0};
    poll(&source, 1, static_cast<int>(iTime.count()));
    while (const std::optional<int> signal = TakeSignal()) {
        if (*signal != forget && !isIgnored(*signal)) {
            mStatus = 128 + *signal;
            return false;
        }
    }
    return true;
}

bool CommandC::Start(char* const iCommand[])
{
    const pid_t parent = getpid();
    mChild = fork();
    if (mChild == 0) {
        Become(iCommand, parent);
    }
    if (mChild < 0) {
        Report(LOG_ERR, "no process can be made (%s): see whether memory or process numbers are used up",
               std::strerror(errno));
    }
    return mChild > 0;
}

int CommandC::GetDescriptor() const
{
    return mSignals;
}

std::optional<int> CommandC::TakeSignal()
{
    signalfd_siginfo info = {};
    while (read(mSignals, &info, sizeof info) == sizeof info) {
        const int signal = static_cast<int>(info.ssi_signo);
        // What the terminal sends at a key goes to the whole group, and must not reach the command twice. DirectFB
        // leaves the group for a session of its own.
        const bool fromKey =
            info.ssi_code == SI_KERNEL && (signal == SIGINT || signal == SIGQUIT) && getpgid(mChild) == getpgrp();
        if (signal == SIGCHLD) {
            Collect();
        } else if (!fromKey) {
            return signal;
        }
    }
    return std::nullopt;
}

void CommandC::HandOn(int iSignal) const
{
    if (mChild > 0 && !mStatus) {
        kill(mChild, iSignal);
    }
}

std::optional<int> CommandC::GetStatus() const
{
    return mStatus;
}

void CommandC::Become(char* const iCommand[], pid_t iParent) const
{
    // Nothing is left running when this program is killed outright.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != iParent) {
        _exit(cannotRun);
    }
    sigaction(SIGCHLD, &mFormerChild, nullptr);
    sigaction(SIGPIPE, &mFormerPipe, nullptr);
    sigprocmask(SIG_SETMASK, &mFormerMask, nullptr);
    execvp(iCommand[0], iCommand);
    const int error = errno;
    Report(LOG_ERR, "%s cannot be started (%s): see that it is there and executable", iCommand[0],
           std::strerror(error));
    _exit(error == ENOENT ? notFound : cannotRun);
}

void CommandC::Collect()
{
    int status = 0;
    if (mChild > 0 && !mStatus && waitpid(mChild, &status, WNOHANG) == mChild) {
        mStatus = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
}

} // namespace PEBBLETON
