#ifndef PEBBLETON_TOUCH_FRAME_BUFFER_H
#define PEBBLETON_TOUCH_FRAME_BUFFER_H

#include <optional>

#include "ScreenMap.h"

namespace PEBBLETON
{

// The size of the screen as the frame buffer /dev/fb0 has it; nothing where it cannot be asked, as errno says.
std::optional<ScreenSize> ReadFrameBufferSize();

} // namespace PEBBLETON

#endif
