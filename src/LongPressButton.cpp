#include "LongPressButton.h"

#include <chrono>

namespace PEBBLETON
{

namespace
{

// The longest hold that is still an ordinary touch: exactly three seconds fire.
constexpr std::int64_t longestTouch = 2999999999;

std::int64_t nowInNanoseconds()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart).count();
}

} // namespace

LongPressButtonC::LongPressButtonC(std::uint32_t iCode, const Rectangle& iRectangle)
    : mCode(iCode), mRectangle(iRectangle), mPressed(false), mPressTime(0)
{
}

bool LongPressButtonC::HandleEvent(const InputEvent& iEvent)
{
    switch (iEvent.type) {
    case EventType::Press:
        Arm();
        return false;
    case EventType::Release:
        return Disarm();
    default:
        return false;
    }
}

const Rectangle& LongPressButtonC::GetRectangle() const
{
    return mRectangle;
}

std::uint32_t LongPressButtonC::GetExitCode() const
{
    return mCode;
}

bool LongPressButtonC::IsPressed() const
{
    return mPressed;
}

void LongPressButtonC::Arm()
{
    mPressed = true;
    mPressTime = nowInNanoseconds();
}

bool LongPressButtonC::Disarm()
{
    const bool wasPressed = mPressed;
    mPressed = false;
    return wasPressed && nowInNanoseconds() - mPressTime > longestTouch;
}

} // namespace PEBBLETON
