#include "LookCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace PEBBLETON
{

namespace
{

// The part of a rectangle that lies within iSize, by its edges; the far ones are not included.
struct Area {
    std::uint32_t left;
    std::uint32_t top;
    std::uint32_t right;
    std::uint32_t bottom;
};

Area clip(const Rectangle& iRectangle, const Size& iSize)
{
    const auto far = [](std::uint32_t iStart, std::uint32_t iLength, std::uint32_t iLimit) {
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(std::uint64_t{iStart} + iLength, iLimit));
    };
    return {std::min(iRectangle.x, iSize.width), std::min(iRectangle.y, iSize.height),
            far(iRectangle.x, iRectangle.width, iSize.width), far(iRectangle.y, iRectangle.height, iSize.height)};
}

bool isEmpty(const Area& iArea)
{
    return iArea.left >= iArea.right || iArea.top >= iArea.bottom;
}

} // namespace

LookCheckC::LookCheckC(const Surfaces& iSurfaces, const std::vector<Entry>& iButtons, FindingsC& ioFindings)
    : mNormal(*iSurfaces.normal)
    , mPressed(*iSurfaces.pressed)
    , mButtons(iButtons)
    , mFindings(ioFindings)
    , mCommon({std::min({mNormal.size.width, mPressed.size.width, iSurfaces.screen->width}),
               std::min({mNormal.size.height, mPressed.size.height, iSurfaces.screen->height})})
{
}

void LookCheckC::Run()
{
    CheckButtons();
    CheckOutside();
}

void LookCheckC::CheckButtons()
{
    for (const Entry& button : mButtons) {
        const Area area = clip(button.rectangle, mCommon);
        bool differs = isEmpty(area);
        for (std::uint32_t y = area.top; y < area.bottom && !differs; ++y) {
            for (std::uint32_t x = area.left; x < area.right && !differs; ++x) {
                differs = Differs(x, y);
            }
        }
        if (!differs) {
            mFindings.AddWarning(
                describe(button) +
                " looks the same in both skins: nobody sees that it is held; draw it as held in the pressed skin");
        }
    }
}

void LookCheckC::CheckOutside()
{
    std::vector<bool> covered(static_cast<std::size_t>(mCommon.width) * mCommon.height);
    for (const Entry& button : mButtons) {
        const Area area = clip(button.rectangle, mCommon);
        for (std::uint32_t y = area.top; y < area.bottom; ++y) {
            for (std::uint32_t x = area.left; x < area.right; ++x) {
                covered[static_cast<std::size_t>(y) * mCommon.width + x] = true;
            }
        }
    }
    Area bounds = {mCommon.width, mCommon.height, 0, 0};
    std::size_t count = 0;
    for (std::uint32_t y = 0; y < mCommon.height; ++y) {
        for (std::uint32_t x = 0; x < mCommon.width; ++x) {
            if (!covered[static_cast<std::size_t>(y) * mCommon.width + x] && Differs(x, y)) {
                ++count;
                bounds = {std::min(bounds.left, x), std::min(bounds.top, y), std::max(bounds.right, x + 1),
                          std::max(bounds.bottom, y + 1)};
            }
        }
    }
    if (count != 0) {
        mFindings.AddWarning("image: the skins differ outside all buttons, in " + std::to_string(count) +
                             " pixels within x " + std::to_string(bounds.left) + " to " +
                             std::to_string(bounds.right - 1) + ", y " + std::to_string(bounds.top) + " to " +
                             std::to_string(bounds.bottom - 1) +
                             ": the pressed skin is never seen there; make them equal, or a rectangle larger");
    }
}

bool LookCheckC::Differs(std::uint32_t iX, std::uint32_t iY) const
{
    return mNormal.GetPixel(iX, iY) != mPressed.GetPixel(iX, iY);
}

} // namespace PEBBLETON
