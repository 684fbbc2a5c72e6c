#ifndef PEBBLETON_SKIN_READER_H
#define PEBBLETON_SKIN_READER_H

#include <string>

#include "Skin.h"

namespace PEBBLETON
{

// Has DirectFB decode the skin in a process of its own, since there are pictures at which DirectFB crashes. The screen
// is headless and has 32 bits a pixel. Throws std::runtime_error where DirectFB does not work at all.
Skin readSkin(const std::string& iPath);

} // namespace PEBBLETON

#endif
