#ifndef PEBBLETON_FONT_WATCH_H
#define PEBBLETON_FONT_WATCH_H

#include <set>
#include <string>

#include <pango/pangocairo.h>

namespace PEBBLETON
{

// Sees which fonts this thread's texts are drawn in, as they are named: a list of families with commas between them.
class FontWatchC
{
public:
    FontWatchC();
    ~FontWatchC();
    FontWatchC(const FontWatchC&) = delete;
    FontWatchC& operator=(const FontWatchC&) = delete;

    // Those of which no family is installed, among all that were asked for since the last call.
    std::set<std::string> TakeMissing();

private:
    std::set<std::string> mSeen;
    PangoFontMap* mFonts;
};

} // namespace PEBBLETON

#endif
