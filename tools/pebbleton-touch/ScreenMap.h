#ifndef PEBBLETON_TOUCH_SCREEN_MAP_H
#define PEBBLETON_TOUCH_SCREEN_MAP_H

namespace PEBBLETON
{

// No screen is wider or higher.
constexpr int mostPixels = 65535;

// The size of the screen in pixels, from 1 to mostPixels either way.
struct ScreenSize {
    int width;
    int height;
};

// A place on the screen in pixels, or on the panel in the panel's own units.
struct Position {
    int x;
    int y;
};

// The values that an axis of a panel goes through from one edge to the other. They may run backwards.
struct AxisRange {
    int first;
    int last;
};

// How a panel lies on its screen: what the properties of the same names say in a device tree.
struct Orientation {
    bool invertedX = false;
    bool invertedY = false;
    bool swapped = false;
};

// Turns positions on a panel into pixels of its screen.
//
// An axis is inverted first, as one of the panel, and the axes are swapped then. The ends of a range are the outermost
// pixels, what lies beyond them counts as there, and in between the nearest pixel is taken.
class ScreenMapC
{
public:
    ScreenMapC(const ScreenSize& iScreen, const AxisRange& iX, const AxisRange& iY, const Orientation& iOrientation);

    Position ToPixel(const Position& iOnPanel) const;

private:
    ScreenSize mScreen;
    AxisRange mX;
    AxisRange mY;
    Orientation mOrientation;
};

} // namespace PEBBLETON

#endif
