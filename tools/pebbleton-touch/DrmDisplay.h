#ifndef PEBBLETON_TOUCH_DRM_DISPLAY_H
#define PEBBLETON_TOUCH_DRM_DISPLAY_H

#include <optional>
#include <string>

#include "ScreenMap.h"

namespace PEBBLETON
{

// The size of the connected display's preferred mode, as the kernel's DRM has it in iFolder. Of several displays it is
// the first one's, by its name; nothing where none is connected.
//
// With iProbe, and where none seems to be connected, the kernel is made to look anew, if this process may: it does not
// by itself.
std::optional<ScreenSize> ReadDrmDisplay(const std::string& iFolder, bool iProbe);

} // namespace PEBBLETON

#endif
