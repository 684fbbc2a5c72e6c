#ifndef PEBBLETON_TOUCH_START_WAIT_H
#define PEBBLETON_TOUCH_START_WAIT_H

#include <chrono>
#include <functional>

#include "Command.h"

namespace PEBBLETON
{

// Waits for what the command needs, before it starts.
class StartWaitC
{
public:
    // How a wait ended.
    enum class Result
    {
        There,
        Missing, // it did not come in time
        Stopped, // a signal ended the command before it began, as its status says
    };

    // ioCommand must outlive this object.
    explicit StartWaitC(CommandC& ioCommand);

    // Asks iIsThere, at least once and then ten times a second until it is true or iMost has passed. A wait of more
    // than a second is reported, once, as one for iWhat; null: it is not.
    Result For(const std::function<bool()>& iIsThere, std::chrono::seconds iMost, const char* iWhat = nullptr) const;

private:
    CommandC& mCommand;
};

} // namespace PEBBLETON

#endif
