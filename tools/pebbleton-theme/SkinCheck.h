#ifndef PEBBLETON_SKIN_CHECK_H
#define PEBBLETON_SKIN_CHECK_H

#include <string>

#include "Findings.h"
#include "Surfaces.h"

namespace PEBBLETON
{

// Looks at each skin by itself and at their sizes.
class SkinCheckC
{
public:
    explicit SkinCheckC(FindingsC& ioFindings);

    // iName is the skin's name in the theme, "image.normal" or "image.pressed".
    void CheckSkin(const std::string& iName, const Skin& iSkin);

    void CheckSizes(const Surfaces& iSurfaces);

private:
    FindingsC& mFindings;
};

} // namespace PEBBLETON

#endif
