#ifndef PEBBLETON_TOUCH_DISPLAY_FINDER_H
#define PEBBLETON_TOUCH_DISPLAY_FINDER_H

#include <optional>
#include <string>

#include "Display.h"

namespace PEBBLETON
{

// Finds the display of this device: the frame buffer /dev/fb0 or, where there is none, the first display that DRM knows
// as connected. It may come late: look again.
class DisplayFinderC
{
public:
    // iRoot: the folder that has /dev and /sys, empty for the system's own.
    explicit DisplayFinderC(std::string iRoot = "");

    // Looks, and tells whether a display has been found by now. Each tenth time, from the first on, it makes the kernel
    // look for displays as well, which may take a while.
    bool Look();

    // Whether looking on finds nothing better: it is the frame buffer, or the kernel does not make one of each display.
    // The display must have been found.
    bool IsFinal() const;

    // The display. It must have been found.
    const Display& Get() const;

    // Why the frame buffer could not be used when it was last looked for, as an errno.
    int GetError() const;

private:
    std::string mRoot;
    unsigned mLooks = 0;
    int mError = 0;
    bool mHasFrameBuffer = false;
    std::optional<Display> mDisplay;
};

} // namespace PEBBLETON

#endif
