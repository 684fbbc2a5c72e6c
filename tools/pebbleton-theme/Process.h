#ifndef PEBBLETON_PROCESS_H
#define PEBBLETON_PROCESS_H

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace PEBBLETON
{

// Another program, run beside this one and never longer than it: when this object goes it is asked to end, and killed
// if it does not; when this process ends it is killed.
class ProcessC
{
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    // Looks for iWords[0] in PATH. iEnvironment is added to this process's own; what the program writes to standard
    // output and error goes to iMessages, and iKept is the one other file that stays open in it. Throws
    // std::runtime_error when the program cannot be run.
    ProcessC(const std::vector<std::string>& iWords, const Environment& iEnvironment, int iMessages, int iKept);
    ~ProcessC();
    ProcessC(const ProcessC&) = delete;
    ProcessC& operator=(const ProcessC&) = delete;

    // Blocks until one of the two ends, and tells which.
    static const ProcessC& WaitForFirst(ProcessC& ioOne, ProcessC& ioOther);

    // As waitpid reports it; means something only after the process has ended.
    int GetStatus() const;

private:
    [[noreturn]] static void Execute(const std::vector<std::string>& iWords, const Environment& iEnvironment,
                                     int iMessages, int iReport);

    bool WaitForEnd(int iMilliseconds) const;

    pid_t mId;
    bool mEnded;
    int mStatus;
};

} // namespace PEBBLETON

#endif
