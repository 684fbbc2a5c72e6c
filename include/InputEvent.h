#ifndef PEBBLETON_INPUT_EVENT_H
#define PEBBLETON_INPUT_EVENT_H

#include <cstdint>

namespace PEBBLETON
{

enum class EventType : std::uint32_t
{
    None = 0,    // a failed wait, or an input that means nothing to a widget
    Press = 1,   // touch down
    Release = 2, // touch up
    Move = 3     // an axis moved, and with it the position if it is X or Y
};

// One input as the widgets see it.
//
// The position is the last one the touch device reported, in its own units: nothing scales or clips it, so the device's
// axis range has to be the screen's size in pixels.
struct InputEvent {
    std::uint32_t x;
    std::uint32_t y;
    EventType type;
};

} // namespace PEBBLETON

#endif
