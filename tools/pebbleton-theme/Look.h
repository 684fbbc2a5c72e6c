#ifndef PEBBLETON_LOOK_H
#define PEBBLETON_LOOK_H

namespace PEBBLETON
{

// Which of the two skins a drawing is drawn for.
enum class Look
{
    Normal,
    Pressed
};

// What of the drawing is drawn: all of it; or what tells which pixels a button covers, without filters and without what
// masks a group around a button, for librsvg does not draw that with an element alone.
enum class Content
{
    All,
    Shapes
};

} // namespace PEBBLETON

#endif
