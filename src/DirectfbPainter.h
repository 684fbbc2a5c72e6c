#ifndef PEBBLETON_DIRECTFB_PAINTER_H
#define PEBBLETON_DIRECTFB_PAINTER_H

#include <directfb.h>

#include "IPainter.h"

namespace PEBBLETON
{

// Copies a widget's rectangle out of one of the two skin surfaces to the same place on the primary surface and waits
// for the flip at the vertical retrace. The bytes travel unchanged: all three surfaces must have the primary surface's
// pixel format.
//
// What DirectFB refuses ends the process (DIRECTFB_CHECK), as DirectFB 1.7.7 does with a rectangle that is not wholly
// inside a surface. An empty rectangle, and one too large to be copied safely, is left undrawn in silence.
class DirectfbPainterC : public IPainter
{
public:
    // The surfaces are not owned and held without a reference; they must outlive the painter's use.
    DirectfbPainterC(IDirectFBSurface& iPrimarySurface, IDirectFBSurface& iNormalSurface,
                     IDirectFBSurface& iPressedSurface);

    void Paint(const IWidget& iWidget) override;

private:
    IDirectFBSurface& mPrimarySurface;
    IDirectFBSurface& mNormalSurface;
    IDirectFBSurface& mPressedSurface;
};

} // namespace PEBBLETON

#endif
