#ifndef PEBBLETON_INSPECTION_H
#define PEBBLETON_INSPECTION_H

#include <optional>
#include <string>

#include "Findings.h"
#include "Surfaces.h"
#include "Theme.h"
#include "ThemeFile.h"

namespace PEBBLETON
{

// All that is to be known of a theme: what the menu reads of it, the skins, and what is wrong.
class InspectionC
{
public:
    // Reads and checks everything. Without iScreen the screen has the size of the normal skin. Throws
    // std::runtime_error when the machine, and not the theme, is at fault.
    InspectionC(const std::string& iThemeName, const std::optional<Size>& iScreen);

    const std::string& GetName() const;
    const FindingsC& GetFindings() const;

    // None: the file cannot be read as a theme.
    const std::optional<ThemeC>& GetTheme() const;
    const Surfaces& GetSurfaces() const;

    // Whether the menu finds the paths of both skins. There is a theme.
    bool HasPaths() const;

    // What becomes of the menu at the first skin that it cannot load; empty: it loads both, or has no path for one.
    const std::string& GetSkinOutcome() const;

private:
    void LoadSkins();
    void LoadSkin(const std::string& iName, const std::optional<std::string>& iPath, std::optional<Skin>& ioSkin);

    ThemeFileC mFile;
    FindingsC mFindings;
    std::optional<ThemeC> mTheme;
    Surfaces mSurfaces;
    std::string mSkinOutcome;
};

} // namespace PEBBLETON

#endif
