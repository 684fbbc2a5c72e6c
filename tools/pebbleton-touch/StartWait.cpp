#include "StartWait.h"

#include "Log.h"
#include "Report.h"

namespace PEBBLETON
{

StartWaitC::StartWaitC(CommandC& ioCommand) : mCommand(ioCommand)
{
}

StartWaitC::Result StartWaitC::For(const std::function<bool()>& iIsThere, std::chrono::seconds iMost,
                                   const char* iWhat) const
{
    constexpr std::chrono::milliseconds pause(100);
    constexpr std::chrono::seconds usual(1); // a wait that is not worth a word
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    bool isToSay = iWhat != nullptr;
    while (!iIsThere()) {
        const auto waited = Clock::now() - start;
        if (waited >= iMost) {
            return Result::Missing;
        }
        if (isToSay && waited >= usual) {
            Report(LOG_INFO, "waits for %s, for %d seconds at the most", iWhat, static_cast<int>(iMost.count()));
            isToSay = false;
        }
        if (!mCommand.Rest(pause)) {
            return Result::Stopped;
        }
    }
    return Result::There;
}

} // namespace PEBBLETON
