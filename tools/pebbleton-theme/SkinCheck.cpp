#include "SkinCheck.h"

namespace PEBBLETON
{

namespace
{

bool differ(const Size& iFirst, const Size& iSecond)
{
    return iFirst.width != iSecond.width || iFirst.height != iSecond.height;
}

std::string describe(const Size& iSize)
{
    return std::to_string(iSize.width) + 'x' + std::to_string(iSize.height);
}

std::string describeMisfit(const Size& iSkin, const Size& iScreen)
{
    const bool smaller = iSkin.width < iScreen.width || iSkin.height < iScreen.height;
    const bool larger = iSkin.width > iScreen.width || iSkin.height > iScreen.height;
    return std::string(smaller ? "the rest of the screen stays as it is" : "") + (smaller && larger ? ", and " : "") +
           (larger ? "what reaches beyond the screen is not seen" : "");
}

} // namespace

SkinCheckC::SkinCheckC(FindingsC& ioFindings) : mFindings(ioFindings)
{
}

void SkinCheckC::CheckSkin(const std::string& iName, const Skin& iSkin)
{
    const std::string prefix = iName + ": \"" + iSkin.path + "\": ";
    if (!iSkin.path.empty() && iSkin.path[0] != '/') {
        mFindings.AddWarning(prefix + "the path does not begin with a / and is taken from the folder that the menu is "
                                      "started in, not from that of the theme: write the whole path on the device");
    }
    if (!iSkin.IsLoaded()) {
        mFindings.AddError(prefix + iSkin.failure);
        return;
    }
    if (!iSkin.damage.empty()) {
        mFindings.AddWarning(prefix + "a part of the picture is missing or wrong, and the menu does not tell (" +
                             iSkin.damage + "): save it anew, as PNG");
    }
    if (iSkin.transparent) {
        mFindings.AddWarning(prefix +
                             "parts of it are transparent, but the menu blends nothing and shows whatever colour "
                             "lies in them: save it without transparency");
    }
}

void SkinCheckC::CheckSizes(const Surfaces& iSurfaces)
{
    if (iSurfaces.screen && iSurfaces.normal && differ(iSurfaces.normal->size, *iSurfaces.screen)) {
        mFindings.AddWarning("image.normal: the skin has " + describe(iSurfaces.normal->size) + " pixels, the screen " +
                             describe(*iSurfaces.screen) + ": " +
                             describeMisfit(iSurfaces.normal->size, *iSurfaces.screen));
    }
    if (iSurfaces.normal && iSurfaces.pressed && differ(iSurfaces.normal->size, iSurfaces.pressed->size)) {
        mFindings.AddWarning("image.pressed: the skin has " + describe(iSurfaces.pressed->size) +
                             " pixels, the normal one " + describe(iSurfaces.normal->size) +
                             ": draw both in the size of the screen, or a held button "
                             "shows another place of the picture");
    } else if (iSurfaces.screen && !iSurfaces.normal && iSurfaces.pressed &&
               differ(iSurfaces.pressed->size, *iSurfaces.screen)) {
        mFindings.AddWarning("image.pressed: the skin has " + describe(iSurfaces.pressed->size) +
                             " pixels, the screen " + describe(*iSurfaces.screen));
    }
}

} // namespace PEBBLETON
