#ifndef PEBBLETON_SVG_PICTURE_H
#define PEBBLETON_SVG_PICTURE_H

#include <optional>
#include <string>

#include <librsvg/rsvg.h>

#include "Canvas.h"
#include "Rectangle.h"
#include "Size.h"

namespace PEBBLETON
{

// An SVG text as librsvg draws it, at 96 dots per inch.
class SvgPictureC
{
public:
    // iFileName tells from which folder the text's pictures are taken. Throws std::runtime_error where librsvg does not
    // read the text.
    SvgPictureC(const std::string& iText, const std::string& iFileName);
    ~SvgPictureC();
    SvgPictureC(const SvgPictureC&) = delete;
    SvgPictureC& operator=(const SvgPictureC&) = delete;

    // Its own size in pixels, of the width and height or else of the view box, rounded up; none: it has no such size,
    // or one of 0. What is too large for the type is given as the largest.
    std::optional<Size> GetSize() const;

    // Draws it in its own size.
    void Draw(CanvasC& ioCanvas) const;

    // The whole pixels of the canvas iSize that the element with this id draws on; none: it draws nothing there.
    std::optional<Rectangle> Measure(const std::string& iId, const Size& iSize) const;

    // Whether the element with this id has a place in the drawing, seen or not.
    bool HasPlace(const std::string& iId) const;

private:
    bool GetGeometry(const std::string& iId, RsvgRectangle& ioInk, RsvgRectangle& ioLogical) const;

    RsvgHandle* mHandle;
    RsvgRectangle mViewport; // of no size: it has none
};

} // namespace PEBBLETON

#endif
