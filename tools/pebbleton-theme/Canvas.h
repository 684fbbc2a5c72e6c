#ifndef PEBBLETON_CANVAS_H
#define PEBBLETON_CANVAS_H

#include <cstdint>
#include <string>
#include <vector>

#include <cairo.h>

#include "Rectangle.h"
#include "Skin.h"

namespace PEBBLETON
{

// A picture of the whole screen, black at first.
class CanvasC
{
public:
    explicit CanvasC(const Size& iSize);

    const Size& GetSize() const;

    // Puts the skin's top left corner in that of the screen; what reaches beyond the screen is left out.
    void Show(const Skin& iSkin);

    // Copies the part of the skin that lies in iRectangle to the same place, as far as both go.
    void Show(const Skin& iSkin, const Rectangle& iRectangle);

    // A surface on these pixels, for the caller to destroy before this object goes.
    cairo_surface_t* CreateSurface();

    // Throws std::runtime_error.
    std::string EncodePng();

private:
    Size mSize;
    std::vector<std::uint32_t> mPixels; // 0x00RRGGBB
};

} // namespace PEBBLETON

#endif
