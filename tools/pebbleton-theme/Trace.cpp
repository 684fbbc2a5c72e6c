#include "Trace.h"

#include <algorithm>
#include <cstddef>

namespace PEBBLETON
{

TraceC::TraceC(const Size& iSize)
    : mSize(iSize)
    , mPixels(static_cast<std::size_t>(iSize.width) * iSize.height)
    , mSurface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(mPixels.data()),
                                                   CAIRO_FORMAT_ARGB32, static_cast<int>(iSize.width),
                                                   static_cast<int>(iSize.height),
                                                   static_cast<int>(sizeof(mPixels[0]) * iSize.width)))
    , mContext(cairo_create(mSurface))
{
}

TraceC::~TraceC()
{
    cairo_destroy(mContext);
    cairo_surface_destroy(mSurface);
}

cairo_t* TraceC::GetContext()
{
    return mContext;
}

Area TraceC::FindDrawn() const
{
    cairo_surface_flush(mSurface);
    Area area = {mSize.width, mSize.height, 0, 0};
    for (std::int64_t y = 0; y < mSize.height; ++y) {
        for (std::int64_t x = 0; x < mSize.width; ++x) {
            if (mPixels[static_cast<std::size_t>(y * mSize.width + x)] != 0) {
                area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x + 1),
                        std::max(area.bottom, y + 1)};
            }
        }
    }
    return area;
}

} // namespace PEBBLETON
