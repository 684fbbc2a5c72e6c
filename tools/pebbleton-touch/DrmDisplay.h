#ifndef PEBBLETON_TOUCH_DRM_DISPLAY_H
#define PEBBLETON_TOUCH_DRM_DISPLAY_H

#include <optional>
#include <string>

#include "ScreenMap.h"

namespace PEBBLETON
{

// The size of the screen where there is no frame buffer: that of the connected display's preferred mode, as the
// kernel's DRM has it in iFolder. Of several displays it is the first one's, by its name; nothing where none is
// connected.
//
// Where none seems to be connected, the kernel is made to look anew, if this process may: it does not by itself.
std::optional<ScreenSize> ReadDisplaySize(const std::string& iFolder = "/sys/class/drm");

} // namespace PEBBLETON

#endif
