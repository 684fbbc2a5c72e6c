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
    // Reads and checks everything. Without iScreen the screen has the size of the normal skin. With iFolder the skins
    // are read from there, wherever the theme says that they will lie. Throws std::runtime_error when the machine, and
    // not the theme, is at fault.
    InspectionC(const std::string& iThemeName, const std::optional<Size>& iScreen, std::string iFolder = {});

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

    std::string mFolder;
    ThemeFileC mFile;
    FindingsC mFindings;
    std::optional<ThemeC> mTheme;
    Surfaces mSurfaces;
    std::string mSkinOutcome;
};

} // namespace PEBBLETON

#endif
