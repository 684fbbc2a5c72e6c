#include "DirectfbPainter.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "Log.h"

namespace PEBBLETON
{

namespace
{

DFBRectangle toDirectfb(const Rectangle& iRectangle)
{
    DFBRectangle directfbRectangle;
    directfbRectangle.x = static_cast<int>(iRectangle.x);
    directfbRectangle.y = static_cast<int>(iRectangle.y);
    directfbRectangle.w = static_cast<int>(iRectangle.width);
    directfbRectangle.h = static_cast<int>(iRectangle.height);
    return directfbRectangle;
}

// The bytes that a copy of the rectangle takes, or 0 when it is not to be copied.
//
// DirectFB counts in signed 32-bit numbers and does not check them: a width or height of 2^31 or more (negative by now)
// or a far edge, pitch or size beyond them makes it crash or write outside the buffer. An empty buffer it would refuse,
// and that would end the program. In both cases a theme's odd rectangle had better cost its picture alone: the button
// is still there to be touched. Nothing is logged, since a repaint would repeat it at every touch. What else does not
// lie on a surface, to the left of it or above it too, DirectFB refuses cleanly.
std::size_t copySize(const DFBRectangle& iRectangle, int iBytesPerPixel)
{
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    const std::int64_t right = std::int64_t{iRectangle.x} + iRectangle.w;
    const std::int64_t bottom = std::int64_t{iRectangle.y} + iRectangle.h;
    const std::int64_t pitch = std::int64_t{iBytesPerPixel} * iRectangle.w;
    if (iRectangle.w < 0 || iRectangle.h < 0 || right > limit || bottom > limit || pitch > limit) {
        return 0;
    }
    const std::int64_t size = pitch * iRectangle.h;
    return size > limit ? 0 : static_cast<std::size_t>(size);
}

} // namespace

DirectfbPainterC::DirectfbPainterC(IDirectFBSurface& iPrimarySurface, IDirectFBSurface& iNormalSurface,
                                   IDirectFBSurface& iPressedSurface)
    : mPrimarySurface(iPrimarySurface), mNormalSurface(iNormalSurface), mPressedSurface(iPressedSurface)
{
}

void DirectfbPainterC::Paint(const IWidget& iWidget)
{
    const DFBRectangle directfbRectangle = toDirectfb(iWidget.GetRectangle());
    DFBSurfacePixelFormat pixelFormat = DSPF_UNKNOWN;
    DIRECTFB_CHECK(mPrimarySurface.GetPixelFormat(&mPrimarySurface, &pixelFormat));
    const int bytesPerPixel = static_cast<int>(DFB_BYTES_PER_PIXEL(pixelFormat));

    // Zeroed, so that what DirectFB leaves unread comes out black.
    std::vector<std::uint8_t> bitmapData(copySize(directfbRectangle, bytesPerPixel));
    if (bitmapData.empty()) {
        return;
    }
    if (iWidget.IsPressed()) {
        DIRECTFB_CHECK(mPressedSurface.Read(&mPressedSurface, &directfbRectangle, bitmapData.data(),
                                            bytesPerPixel * directfbRectangle.w));
    } else {
        DIRECTFB_CHECK(mNormalSurface.Read(&mNormalSurface, &directfbRectangle, bitmapData.data(),
                                           bytesPerPixel * directfbRectangle.w));
    }
    DIRECTFB_CHECK(mPrimarySurface.Write(&mPrimarySurface, &directfbRectangle, bitmapData.data(),
                                         bytesPerPixel * directfbRectangle.w));
    DIRECTFB_CHECK(mPrimarySurface.Flip(&mPrimarySurface, nullptr, DSFLIP_WAITFORSYNC));
}

} // namespace PEBBLETON
