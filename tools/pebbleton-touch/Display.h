#ifndef PEBBLETON_TOUCH_DISPLAY_H
#define PEBBLETON_TOUCH_DISPLAY_H

#include <string>

#include "ScreenMap.h"

namespace PEBBLETON
{

// What the command shows itself on.
struct Display {
    ScreenSize size;
    std::string card; // the DRM device that drives it, such as /dev/dri/card0; empty: none does
};

} // namespace PEBBLETON

#endif
