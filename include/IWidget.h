#ifndef PEBBLETON_I_WIDGET_H
#define PEBBLETON_I_WIDGET_H

#include <cstdint>

#include "InputEvent.h"
#include "Rectangle.h"

namespace PEBBLETON
{

// An area of the menu that watches the stream of input events and at some moment fires, which ends the program with the
// widget's exit code.
class IWidget
{
public:
    virtual ~IWidget() = default;

    // Offers one event. True means that the widget fires. On false the widget may still have changed its state and
    // repainted itself.
    virtual bool HandleEvent(const InputEvent& iEvent) = 0;

    // The area that a painter copies; valid as long as the widget.
    virtual const Rectangle& GetRectangle() const = 0;

    virtual std::uint32_t GetExitCode() const = 0;

    // True: the widget is drawn from the pressed skin, otherwise from the normal one.
    virtual bool IsPressed() const = 0;
};

} // namespace PEBBLETON

#endif
