#ifndef PEBBLETON_SIZE_H
#define PEBBLETON_SIZE_H

#include <cstdint>

namespace PEBBLETON
{

// No screen is wider or higher, and a picture of one is still held by memory.
constexpr std::uint32_t largestSide = 8192;

// The size of a screen or a picture in pixels.
struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

} // namespace PEBBLETON

#endif
