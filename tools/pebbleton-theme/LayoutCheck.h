#ifndef PEBBLETON_LAYOUT_CHECK_H
#define PEBBLETON_LAYOUT_CHECK_H

#include <string>
#include <vector>

#include "Findings.h"
#include "Surfaces.h"
#include "Theme.h"

namespace PEBBLETON
{

// Looks at where the push buttons lie: on the screen and the skins, and among each other.
class LayoutCheckC
{
public:
    // Both must outlive the check.
    LayoutCheckC(const Surfaces& iSurfaces, FindingsC& ioFindings);

    void Run(const std::vector<Entry>& iButtons);

private:
    void CheckPlace(const Entry& iButton);
    void CheckEdges(const Entry& iButton);
    void CheckPair(const Entry& iFirst, const Entry& iSecond);

    const Surfaces& mSurfaces;
    FindingsC& mFindings;
};

} // namespace PEBBLETON

#endif
