#ifndef PEBBLETON_DIRECTFB_EVENT_WAITER_H
#define PEBBLETON_DIRECTFB_EVENT_WAITER_H

#include <cstdint>

#include <directfb.h>

#include "IEventWaiter.h"

namespace PEBBLETON
{

// Turns DirectFB's input events into those of the widgets.
//
// DirectFB reports a position one axis at a time and a touch without position. Hence every axis motion is a Move of its
// own, and each event carries the last value received on both axes, (0, 0) before the first. Any button of any device
// counts as a touch.
//
// A failed wait is logged and delivered as None; nothing here ends the process.
class DirectfbEventWaiterC : public IEventWaiter
{
public:
    explicit DirectfbEventWaiterC(IDirectFBEventBuffer* iEventBuffer);

    void Reset() override;
    void WaitEvent(InputEvent& ioEvent) override;

private:
    void TakeEvent(InputEvent& ioEvent);
    void Translate(const DFBInputEvent& iDirectfbEvent, InputEvent& ioEvent);
    void Follow(const DFBInputEvent& iMotion);

    IDirectFBEventBuffer* mEventBuffer; // not owned, and held without a reference
    std::uint32_t mLastX;
    std::uint32_t mLastY;
};

} // namespace PEBBLETON

#endif
