#include "Button.h"

#include "Viewer.h"

namespace PEBBLETON
{

ButtonC::ButtonC(std::uint32_t iCode, Viewer* iViewer, const Rectangle& iRectangle)
    : mCode(iCode), mViewer(iViewer), mRectangle(iRectangle), mPressed(false)
{
    mViewer->Paint(*this);
}

bool ButtonC::HandleEvent(const InputEvent& iEvent)
{
    const bool wasPressed = mPressed;
    const bool inside = Contains(iEvent.x, iEvent.y);
    const bool lifted = inside && iEvent.type == EventType::Release;
    if (!inside || lifted) {
        mPressed = false;
    } else if (iEvent.type == EventType::Press) {
        mPressed = true;
    }
    if (mPressed != wasPressed) {
        mViewer->Paint(*this);
    }
    return wasPressed && lifted;
}

const Rectangle& ButtonC::GetRectangle() const
{
    return mRectangle;
}

std::uint32_t ButtonC::GetExitCode() const
{
    return mCode;
}

bool ButtonC::IsPressed() const
{
    return mPressed;
}

bool ButtonC::Contains(std::uint32_t iX, std::uint32_t iY) const
{
    return mRectangle.x <= iX && iX <= mRectangle.x + mRectangle.width && mRectangle.y <= iY &&
           iY <= mRectangle.y + mRectangle.height;
}

} // namespace PEBBLETON
