#ifndef PEBBLETON_TOUCH_DRM_DISPLAY_H
#define PEBBLETON_TOUCH_DRM_DISPLAY_H

#include <optional>
#include <string>

#include "Display.h"

namespace PEBBLETON
{

// The connected display as the kernel's DRM has it in iFolder, with the size of its preferred mode. Of several displays
// it is the first one, by its name; nothing where none is connected.
//
// With iProbe, and where none seems to be connected, the kernel is made to look anew, if this process may: it does not
// by itself.
std::optional<Display> ReadDrmDisplay(const std::string& iFolder, bool iProbe);

} // namespace PEBBLETON

#endif
