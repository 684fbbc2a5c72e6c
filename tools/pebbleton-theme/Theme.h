#ifndef PEBBLETON_THEME_H
#define PEBBLETON_THEME_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Rectangle.h"

namespace PEBBLETON
{

class ThemeFileC;

// One child of a section that the menu reads as a button.
struct Entry {
    std::string section;
    std::string name; // "button", or the name of what stands in its place
    std::string value;
    bool accepted; // by the menu; else it ends here, and the numbers mean nothing
    std::uint32_t code;
    Rectangle rectangle;
};

// The section and the entry as they are written, for a message.
std::string describe(const Entry& iEntry);

// What the menu makes of a theme file: read with the menu's own code.
class ThemeC
{
public:
    static constexpr const char* longPressSection = "button_long_press";
    static constexpr const char* pushSection = "button_normal";

    // iFile is loaded.
    explicit ThemeC(const ThemeFileC& iFile);

    // The paths of the skins as written; none: the theme has no such name.
    const std::optional<std::string>& GetNormalPath() const;
    const std::optional<std::string>& GetPressedPath() const;

    // What the menu reads of each section, in the order in which touches are offered, refused entries included.
    const std::vector<Entry>& GetLongPressEntries() const;
    const std::vector<Entry>& GetPushEntries() const;

    // Those that become buttons, or would if the others were mended.
    std::vector<Entry> GetPushButtons() const;
    std::vector<Entry> GetLongPressButtons() const;

    // Whether the menu asks for nothing that is missing here, and refuses no entry: it ends with the status 255
    // otherwise.
    bool IsComplete() const;

private:
    std::optional<std::string> mNormalPath;
    std::optional<std::string> mPressedPath;
    std::vector<Entry> mLongPressEntries;
    std::vector<Entry> mPushEntries;
};

} // namespace PEBBLETON

#endif
