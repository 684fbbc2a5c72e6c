#ifndef PEBBLETON_I_EVENT_WAITER_H
#define PEBBLETON_I_EVENT_WAITER_H

#include "InputEvent.h"

namespace PEBBLETON
{

// The source of input events.
class IEventWaiter
{
public:
    virtual ~IEventWaiter() = default;

    // Discards every event that is queued. The last known position stays.
    virtual void Reset() = 0;

    // Blocks, without time limit, until the next input. The position is always written. The type is written for a
    // touch, a motion (Move) and a failed wait (None); any other input leaves it as the caller set it.
    virtual void WaitEvent(InputEvent& ioEvent) = 0;
};

} // namespace PEBBLETON

#endif
