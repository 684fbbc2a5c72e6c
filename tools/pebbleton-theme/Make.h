#ifndef PEBBLETON_MAKE_H
#define PEBBLETON_MAKE_H

#include <optional>
#include <string>

#include "Arguments.h"
#include "Findings.h"

namespace PEBBLETON
{

// Makes the skins and the theme file of a drawing. Returns the theme file's name; none: the drawing has an error, as a
// finding says, and nothing was written. Throws std::runtime_error where something else is at fault, and then nothing
// was changed either.
std::optional<std::string> makeTheme(const Arguments& iArguments, FindingsC& ioFindings);

} // namespace PEBBLETON

#endif
