#ifndef PEBBLETON_TRACE_H
#define PEBBLETON_TRACE_H

#include <cstdint>
#include <vector>

#include <cairo.h>

#include "Size.h"

namespace PEBBLETON
{

// By its edges; the far ones are not included. Empty: the near ones are not before them.
struct Area {
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;
};

// A transparent picture of which it is to be known where it was drawn on.
class TraceC
{
public:
    explicit TraceC(const Size& iSize);
    ~TraceC();
    TraceC(const TraceC&) = delete;
    TraceC& operator=(const TraceC&) = delete;

    // To draw with, as long as this object lives.
    cairo_t* GetContext();

    // The least area that holds every pixel that is no longer transparent.
    Area FindDrawn() const;

private:
    Size mSize;
    std::vector<std::uint32_t> mPixels; // 0xAARRGGBB
    cairo_surface_t* mSurface;
    cairo_t* mContext;
};

} // namespace PEBBLETON

#endif
