#include "FrameBuffer.h"

#include <fcntl.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace PEBBLETON
{

std::optional<ScreenSize> ReadFrameBufferSize()
{
    const int frameBuffer = open("/dev/fb0", O_RDONLY | O_CLOEXEC);
    if (frameBuffer < 0) {
        return std::nullopt;
    }
    fb_var_screeninfo info = {};
    const bool known = ioctl(frameBuffer, FBIOGET_VSCREENINFO, &info) == 0;
    close(frameBuffer);
    const ScreenSize screen = {static_cast<int>(info.xres), static_cast<int>(info.yres)};
    if (!known || screen.width < 1 || screen.height < 1) {
        return std::nullopt;
    }
    return screen;
}

} // namespace PEBBLETON
