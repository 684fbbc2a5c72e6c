#ifndef PEBBLETON_SKIN_H
#define PEBBLETON_SKIN_H

#include <cstdint>
#include <string>
#include <vector>

#include "Size.h"

namespace PEBBLETON
{

// A skin as the menu's display makes it of a file.
struct Skin {
    std::string path;    // as the theme has it
    std::string failure; // why the menu ends or crashes at it; empty: it does not, and the rest counts
    std::string damage;  // why a part of it is missing or wrong; empty: it is whole
    bool transparent;    // somewhere
    Size size;
    std::vector<std::uint32_t> pixels; // 0x00RRGGBB, row by row from the top
    std::string outcome = "hanging";   // at a failure, what becomes of the menu: "exit status ...", "signal ..."

    bool IsLoaded() const
    {
        return failure.empty();
    }

    std::uint32_t GetPixel(std::uint32_t iX, std::uint32_t iY) const
    {
        return pixels[static_cast<std::size_t>(iY) * size.width + iX];
    }
};

} // namespace PEBBLETON

#endif
