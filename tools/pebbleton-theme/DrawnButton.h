#ifndef PEBBLETON_DRAWN_BUTTON_H
#define PEBBLETON_DRAWN_BUTTON_H

#include <cstdint>
#include <string>
#include <vector>

#include "Drawing.h"
#include "Rectangle.h"

namespace PEBBLETON
{

// An element that is a button, as its id says.
struct DrawnButton {
    const xmlNode* element;
    std::string id;
    bool isLongPress;
    std::uint32_t code;
    Rectangle rectangle; // what it draws, once that is known
};

// Whether an element with this id is meant to be one.
bool isButtonId(const std::string& iId);

// Finds all buttons, in the order of the drawing and without their rectangles; what is wrong with an id is added.
std::vector<DrawnButton> findButtons(const DrawingC& iDrawing, FindingsC& ioFindings);

} // namespace PEBBLETON

#endif
