#include "DisplayFinder.h"

#include <cerrno>
#include <fstream>
#include <utility>

#include "DrmDisplay.h"
#include "FrameBuffer.h"

namespace PEBBLETON
{

DisplayFinderC::DisplayFinderC(std::string iRoot) : mRoot(std::move(iRoot))
{
}

bool DisplayFinderC::Look()
{
    constexpr unsigned looksForEachProbe = 10;
    const std::optional<ScreenSize> size = ReadFrameBufferSize(mRoot + "/dev/fb0");
    mError = errno;
    mHasFrameBuffer = size.has_value();
    if (mHasFrameBuffer) {
        mDisplay = {*size, ReadFrameBufferCard(mRoot + "/sys/class/graphics/fb0")};
    } else if (const auto found = ReadDrmDisplay(mRoot + "/sys/class/drm", mLooks++ % looksForEachProbe == 0)) {
        mDisplay = found;
    }
    return mDisplay.has_value();
}

bool DisplayFinderC::IsFinal() const
{
    std::string emulation;
    std::getline(std::ifstream(mRoot + "/sys/module/drm_kms_helper/parameters/fbdev_emulation"), emulation);
    return mHasFrameBuffer || emulation != "Y";
}

const Display& DisplayFinderC::Get() const
{
    return *mDisplay;
}

int DisplayFinderC::GetError() const
{
    return mError;
}

} // namespace PEBBLETON
