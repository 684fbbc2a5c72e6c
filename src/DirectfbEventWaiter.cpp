#include "DirectfbEventWaiter.h"

#include "Log.h"

namespace PEBBLETON
{

DirectfbEventWaiterC::DirectfbEventWaiterC(IDirectFBEventBuffer* iEventBuffer)
    : mEventBuffer(iEventBuffer), mLastX(0), mLastY(0)
{
}

void DirectfbEventWaiterC::Reset()
{
    mEventBuffer->Reset(mEventBuffer);
}

void DirectfbEventWaiterC::WaitEvent(InputEvent& ioEvent)
{
    const DFBResult result = mEventBuffer->WaitForEvent(mEventBuffer);
    if (result == DFB_OK) {
        TakeEvent(ioEvent);
    } else {
        ioEvent.type = EventType::None;
        Log(LOG_ERR, "Wait for event failed with %d. \n", result);
    }
    ioEvent.x = mLastX;
    ioEvent.y = mLastY;
}

void DirectfbEventWaiterC::TakeEvent(InputEvent& ioEvent)
{
    DFBEvent event = {};
    if (mEventBuffer->GetEvent(mEventBuffer, &event) == DFB_OK) {
        Translate(event.input, ioEvent);
    }
}

void DirectfbEventWaiterC::Translate(const DFBInputEvent& iDirectfbEvent, InputEvent& ioEvent)
{
    switch (iDirectfbEvent.type) {
    case DIET_BUTTONPRESS:
        ioEvent.type = EventType::Press;
        break;
    case DIET_BUTTONRELEASE:
        ioEvent.type = EventType::Release;
        break;
    case DIET_AXISMOTION:
        ioEvent.type = EventType::Move;
        Follow(iDirectfbEvent);
        break;
    default:
        Log(LOG_DEBUG, "Received an unsupported event. Type: %d\n", iDirectfbEvent.type);
        break;
    }
}

void DirectfbEventWaiterC::Follow(const DFBInputEvent& iMotion)
{
    if (iMotion.axis == DIAI_X) {
        mLastX = static_cast<std::uint32_t>(iMotion.axisabs);
    } else if (iMotion.axis == DIAI_Y) {
        mLastY = static_cast<std::uint32_t>(iMotion.axisabs);
    }
}

} // namespace PEBBLETON
