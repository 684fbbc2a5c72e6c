#ifndef PEBBLETON_TOUCH_COMMAND_H
#define PEBBLETON_TOUCH_COMMAND_H

#include <chrono>
#include <csignal>
#include <optional>

#include <sys/types.h>

namespace PEBBLETON
{

// The program that is run, and the signals that concern it: as if it had been started without this one.
//
// From construction on, the signals to be handed on, and the one that tells of its end, wait at a file descriptor. At
// most one object at a time.
class CommandC
{
public:
    // Exit statuses that are not the command's.
    static constexpr int cannotRun = 126;
    static constexpr int notFound = 127;

    // Not the command's business, but that of whoever takes it.
    static constexpr int forget = SIGUSR1;

    CommandC();
    ~CommandC();
    CommandC(const CommandC&) = delete;
    CommandC& operator=(const CommandC&) = delete;

    // Does nothing for so long, or less when a signal comes; only before Start. False: the signal is one that ends the
    // command, which is not to be started any more; GetStatus tells of it.
    bool Rest(std::chrono::milliseconds iTime);

    // Starts it: iCommand as for exec, ended by a null pointer. It has the standard streams, and the signals are to it
    // what they were to this process. What cannot be started is reported, and ends with cannotRun or notFound. False:
    // no process can be made, which is reported.
    bool Start(char* const iCommand[]);

    // To be polled; readable when a signal came. Below 0: it could not be made, and the command cannot be started.
    int GetDescriptor() const;

    // Takes what has come: the command's end, SIGTERM, SIGINT, SIGHUP and SIGQUIT, and `forget`. It returns the next of
    // the signals, which is to be handed on unless it is the last one; nothing when no more has come.
    std::optional<int> TakeSignal();

    // Sends the command a signal, if it runs.
    void HandOn(int iSignal) const;

    // How the command ended: its exit status, or 128 and the number of the signal that ended it. Nothing: it runs, or
    // is yet to start.
    std::optional<int> GetStatus() const;

private:
    [[noreturn]] void Become(char* const iCommand[], pid_t iParent) const;
    void Collect();

    sigset_t mFormerMask;
    struct sigaction mFormerChild;
    struct sigaction mFormerPipe;
    int mSignals; // owned
    pid_t mChild = -1;
    std::optional<int> mStatus;
};

} // namespace PEBBLETON

#endif
