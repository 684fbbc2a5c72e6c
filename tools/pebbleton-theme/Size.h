#ifndef PEBBLETON_SIZE_H
#define PEBBLETON_SIZE_H

#include <cstdint>

namespace PEBBLETON
{

// The size of a screen or a picture in pixels.
struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

} // namespace PEBBLETON

#endif
