#ifndef PEBBLETON_SKIN_FORM_H
#define PEBBLETON_SKIN_FORM_H

#include <string>
#include <utility>

#include "Canvas.h"

namespace PEBBLETON
{

// In what form the skins are written.
enum class SkinForm
{
    Png,
    Palette, // PNG with at most 256 colours, the same for both
    Dfiff    // DirectFB's own
};

// The files of the normal and the pressed skin; for Dfiff in one of DirectFB's pixel formats. Both canvases are of one
// size. Throws std::runtime_error, also where the program that it takes is missing.
std::pair<std::string, std::string> encodeSkins(CanvasC& ioNormal, CanvasC& ioPressed, SkinForm iForm,
                                                const std::string& iPixelFormat);

} // namespace PEBBLETON

#endif
