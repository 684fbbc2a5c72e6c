#ifndef PEBBLETON_THEME_TEXT_H
#define PEBBLETON_THEME_TEXT_H

#include <string>
#include <vector>

#include "DrawnButton.h"

namespace PEBBLETON
{

// The text of a theme file. iButtons come in the order of the drawing; of two that overlap the one on top is to fire,
// and so they are written in reverse. iDrawing is named in a comment.
std::string makeThemeText(const std::string& iDrawing, const std::string& iNormalPath, const std::string& iPressedPath,
                          const std::vector<DrawnButton>& iButtons);

} // namespace PEBBLETON

#endif
