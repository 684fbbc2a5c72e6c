#ifndef PEBBLETON_SURFACES_H
#define PEBBLETON_SURFACES_H

#include <optional>

#include "Skin.h"

namespace PEBBLETON
{

// What the menu draws on and copies from. None of them need be there: a skin is not when it cannot be loaded.
struct Surfaces {
    std::optional<Size> screen;
    std::optional<Skin> normal;
    std::optional<Skin> pressed;
};

} // namespace PEBBLETON

#endif
