#ifndef PEBBLETON_TOUCH_FRAME_BUFFER_H
#define PEBBLETON_TOUCH_FRAME_BUFFER_H

#include <optional>
#include <string>

#include "ScreenMap.h"

namespace PEBBLETON
{

// The size of the screen as the frame buffer iDevice has it; nothing where it cannot be asked, as errno says.
std::optional<ScreenSize> ReadFrameBufferSize(const std::string& iDevice);

// The DRM device that plays the frame buffer whose folder below /sys this is, such as /dev/dri/card0; empty: it is one
// of its own.
std::string ReadFrameBufferCard(const std::string& iFolder);

} // namespace PEBBLETON

#endif
