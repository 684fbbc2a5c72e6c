#ifndef PEBBLETON_I_PAINTER_H
#define PEBBLETON_I_PAINTER_H

#include "IWidget.h"

namespace PEBBLETON
{

// Draws widgets on the screen.
class IPainter
{
public:
    virtual ~IPainter() = default;

    // Shows the widget's rectangle in the state that IsPressed reports, as far as it can be drawn, before it returns.
    virtual void Paint(const IWidget& iWidget) = 0;
};

} // namespace PEBBLETON

#endif
