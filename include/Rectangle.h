#ifndef PEBBLETON_RECTANGLE_H
#define PEBBLETON_RECTANGLE_H

#include <cstdint>

namespace PEBBLETON
{

// A widget's area in screen pixels. It addresses the screen and both skin images alike, since the skins are drawn in
// screen coordinates.
struct Rectangle {
    std::uint32_t x;
    std::uint32_t y;
    std::uint32_t width;
    std::uint32_t height;
};

} // namespace PEBBLETON

#endif
