#include "Canvas.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace PEBBLETON
{

namespace
{

cairo_status_t append(void* ioText, const unsigned char* iData, unsigned iLength)
{
    static_cast<std::string*>(ioText)->append(reinterpret_cast<const char*>(iData), iLength);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

CanvasC::CanvasC(const Size& iSize) : mSize(iSize), mPixels(static_cast<std::size_t>(iSize.width) * iSize.height)
{
}

const Size& CanvasC::GetSize() const
{
    return mSize;
}

void CanvasC::Show(const Skin& iSkin)
{
    Show(iSkin, {0, 0, iSkin.size.width, iSkin.size.height});
}

void CanvasC::Show(const Skin& iSkin, const Rectangle& iRectangle)
{
    const auto end = [](std::uint32_t iStart, std::uint32_t iLength, std::uint32_t iSkinLength,
                        std::uint32_t iLength2) {
        return std::min({std::uint64_t{iStart} + iLength, std::uint64_t{iSkinLength}, std::uint64_t{iLength2}});
    };
    const std::uint64_t right = end(iRectangle.x, iRectangle.width, iSkin.size.width, mSize.width);
    const std::uint64_t bottom = end(iRectangle.y, iRectangle.height, iSkin.size.height, mSize.height);
    for (std::uint32_t y = iRectangle.y; y < bottom; ++y) {
        for (std::uint32_t x = iRectangle.x; x < right; ++x) {
            mPixels[static_cast<std::size_t>(y) * mSize.width + x] = iSkin.GetPixel(x, y);
        }
    }
}

cairo_surface_t* CanvasC::CreateSurface()
{
    return cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(mPixels.data()), CAIRO_FORMAT_RGB24,
                                               static_cast<int>(mSize.width), static_cast<int>(mSize.height),
                                               static_cast<int>(sizeof(mPixels[0]) * mSize.width));
}

std::string CanvasC::EncodePng()
{
    std::string png;
    cairo_surface_t* surface = CreateSurface();
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface, append, &png);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(std::string("the picture cannot be encoded: ") + cairo_status_to_string(status));
    }
    return png;
}

} // namespace PEBBLETON
