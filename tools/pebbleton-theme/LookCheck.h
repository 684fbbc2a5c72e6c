#ifndef PEBBLETON_LOOK_CHECK_H
#define PEBBLETON_LOOK_CHECK_H

#include <vector>

#include "Findings.h"
#include "Surfaces.h"
#include "Theme.h"

namespace PEBBLETON
{

// Compares the two skins, which should differ in the buttons and nowhere else.
class LookCheckC
{
public:
    // All must outlive the check; both skins are there.
    LookCheckC(const Surfaces& iSurfaces, const std::vector<Entry>& iButtons, FindingsC& ioFindings);

    void Run();

private:
    void CheckButtons();
    void CheckOutside();
    bool Differs(std::uint32_t iX, std::uint32_t iY) const;

    const Skin& mNormal;
    const Skin& mPressed;
    const std::vector<Entry>& mButtons;
    FindingsC& mFindings;
    Size mCommon; // what the skins and the screen have in common
};

} // namespace PEBBLETON

#endif
