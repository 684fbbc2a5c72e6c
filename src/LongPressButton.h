#ifndef PEBBLETON_LONG_PRESS_BUTTON_H
#define PEBBLETON_LONG_PRESS_BUTTON_H

#include <cstdint>

#include "IWidget.h"

namespace PEBBLETON
{

// Fires when a touch anywhere on the screen is lifted after three seconds or more.
//
// The time counts from the last Press to the Release, by the monotonic clock at the moment each is handled. There is no
// timer: the button cannot fire while the finger is still down. It is never drawn, and its rectangle decides nothing.
class LongPressButtonC : public IWidget
{
public:
    LongPressButtonC(std::uint32_t iCode, const Rectangle& iRectangle);

    bool HandleEvent(const InputEvent& iEvent) override;
    const Rectangle& GetRectangle() const override;
    std::uint32_t GetExitCode() const override;

    // True from a Press to the Release after it.
    bool IsPressed() const override;

private:
    void Arm();
    bool Disarm();

    std::uint32_t mCode;
    Rectangle mRectangle;
    bool mPressed;
    std::int64_t mPressTime; // nanoseconds on the monotonic clock; means something only while pressed
};

} // namespace PEBBLETON

#endif
