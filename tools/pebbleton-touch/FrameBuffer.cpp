#include "FrameBuffer.h"

#include <cerrno>

#include <fcntl.h>
#include <glob.h>
#include <linux/fb.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace PEBBLETON
{

std::optional<ScreenSize> ReadFrameBufferSize(const std::string& iDevice)
{
    const int frameBuffer = open(iDevice.c_str(), O_RDONLY | O_CLOEXEC);
    if (frameBuffer < 0) {
        return std::nullopt;
    }
    fb_var_screeninfo info = {};
    const bool known = ioctl(frameBuffer, FBIOGET_VSCREENINFO, &info) == 0;
    close(frameBuffer);
    const auto isSize = [](unsigned iPixels) { return iPixels >= 1 && iPixels <= unsigned{mostPixels}; };
    if (!known || !isSize(info.xres) || !isSize(info.yres)) {
        errno = EINVAL;
        return std::nullopt;
    }
    return ScreenSize{static_cast<int>(info.xres), static_cast<int>(info.yres)};
}

std::string ReadFrameBufferCard(const std::string& iFolder)
{
    glob_t found = {};
    std::string card;
    if (glob((iFolder + "/device/drm/card[0-9]*").c_str(), 0, nullptr, &found) == 0) {
        const std::string path = found.gl_pathv[0];
        card = "/dev/dri" + path.substr(path.rfind('/'));
    }
    globfree(&found);
    return card;
}

} // namespace PEBBLETON
