#ifndef PEBBLETON_DRAWING_CHECK_H
#define PEBBLETON_DRAWING_CHECK_H

#include <set>
#include <string>
#include <utility>

#include "Drawing.h"
#include "FontWatch.h"
#include "SvgPicture.h"

namespace PEBBLETON
{

// Looks for what librsvg leaves out or replaces without a word: pictures that cannot be loaded, and fonts that are not
// installed.
class DrawingCheckC
{
public:
    // Both must outlive the check, and so must ioFonts, which sees what is drawn.
    DrawingCheckC(const DrawingC& iDrawing, FontWatchC& ioFonts, FindingsC& ioFindings);

    void CheckImages();

    // Of one skin. What was wrong with the one before is not said again.
    void CheckTexts(const SvgPictureC& iPicture);

    // Of what was drawn since, as from a definition that is used.
    void CheckDrawn();

private:
    void CheckImage(const xmlNode* iImage);

    const DrawingC& mDrawing;
    FontWatchC& mFonts;
    FindingsC& mFindings;
    std::set<std::pair<const xmlNode*, std::string>> mMissing; // fonts, each with its text
};

} // namespace PEBBLETON

#endif
