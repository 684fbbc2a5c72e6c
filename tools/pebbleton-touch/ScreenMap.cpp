#include "ScreenMap.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace PEBBLETON
{

namespace
{

AxisRange backwards(const AxisRange& iRange)
{
    return {iRange.last, iRange.first};
}

// In 64 bits, since the kernel's ranges may take up all of 32.
int scale(int iValue, const AxisRange& iRange, int iPixels)
{
    const std::int64_t length = std::abs(std::int64_t{iRange.last} - iRange.first);
    const std::int64_t way = (std::int64_t{iValue} - iRange.first) * (iRange.last < iRange.first ? -1 : 1);
    const std::int64_t inside = std::clamp<std::int64_t>(way, 0, length);
    return length == 0 ? 0 : static_cast<int>((inside * (iPixels - 1) + length / 2) / length);
}

} // namespace

ScreenMapC::ScreenMapC(const ScreenSize& iScreen, const AxisRange& iX, const AxisRange& iY,
                       const Orientation& iOrientation)
    : mScreen(iScreen)
    , mX(iOrientation.invertedX ? backwards(iX) : iX)
    , mY(iOrientation.invertedY ? backwards(iY) : iY)
    , mOrientation(iOrientation)
{
}

Position ScreenMapC::ToPixel(const Position& iOnPanel) const
{
    if (mOrientation.swapped) {
        return {scale(iOnPanel.y, mY, mScreen.width), scale(iOnPanel.x, mX, mScreen.height)};
    }
    return {scale(iOnPanel.x, mX, mScreen.width), scale(iOnPanel.y, mY, mScreen.height)};
}

} // namespace PEBBLETON
