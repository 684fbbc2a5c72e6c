#include "Inspection.h"

#include <utility>

#include "EntryCheck.h"
#include "LayoutCheck.h"
#include "LookCheck.h"
#include "SkinCheck.h"
#include "SkinReader.h"
#include "StructureCheck.h"

namespace PEBBLETON
{

InspectionC::InspectionC(const std::string& iThemeName, const std::optional<Size>& iScreen, std::string iFolder)
    : mFolder(std::move(iFolder)), mFile(iThemeName), mFindings(iThemeName), mSurfaces({iScreen, {}, {}})
{
    if (!mFile.Load(mFindings)) {
        return;
    }
    checkStructure(mFile, mFindings);
    mTheme.emplace(mFile);
    LoadSkins();
    EntryCheckC(mFile, *mTheme, mFindings).Run();
    const std::vector<Entry> buttons = mTheme->GetPushButtons();
    LayoutCheckC(mSurfaces, mFindings).Run(buttons);
    if (mSurfaces.normal && mSurfaces.pressed && mSurfaces.normal->damage.empty() &&
        mSurfaces.pressed->damage.empty()) {
        LookCheckC(mSurfaces, buttons, mFindings).Run();
    }
}

const std::string& InspectionC::GetName() const
{
    return mFile.GetName();
}

const FindingsC& InspectionC::GetFindings() const
{
    return mFindings;
}

const std::optional<ThemeC>& InspectionC::GetTheme() const
{
    return mTheme;
}

const Surfaces& InspectionC::GetSurfaces() const
{
    return mSurfaces;
}

bool InspectionC::HasPaths() const
{
    return mFile.GetHiddenName() != "image" && mTheme->GetNormalPath() && mTheme->GetPressedPath();
}

const std::string& InspectionC::GetSkinOutcome() const
{
    return mSkinOutcome;
}

void InspectionC::LoadSkins()
{
    LoadSkin("image.normal", mTheme->GetNormalPath(), mSurfaces.normal);
    LoadSkin("image.pressed", mTheme->GetPressedPath(), mSurfaces.pressed);
    if (!mSurfaces.screen && mSurfaces.normal) {
        mSurfaces.screen = mSurfaces.normal->size;
    }
    SkinCheckC(mFindings).CheckSizes(mSurfaces);
}

void InspectionC::LoadSkin(const std::string& iName, const std::optional<std::string>& iPath,
                           std::optional<Skin>& ioSkin)
{
    if (!iPath) {
        return;
    }
    Skin skin = readSkin(mFolder.empty() ? *iPath : mFolder + '/' + iPath->substr(iPath->rfind('/') + 1));
    skin.path = *iPath;
    SkinCheckC(mFindings).CheckSkin(iName, skin);
    if (skin.IsLoaded()) {
        ioSkin = std::move(skin);
    } else if (mSkinOutcome.empty()) {
        mSkinOutcome = skin.outcome;
    }
}

} // namespace PEBBLETON
