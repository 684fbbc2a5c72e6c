#include "Make.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "Canvas.h"
#include "Drawing.h"
#include "DrawingCheck.h"
#include "DrawnButton.h"
#include "FileSet.h"
#include "FontWatch.h"
#include "SvgPicture.h"
#include "ThemeText.h"

namespace PEBBLETON
{

namespace
{

constexpr const char* themeName = "theme.conf";

// The drawing as librsvg has it for either skin.
struct Looks {
    Looks(const DrawingC& iDrawing, Content iContent)
        : normal(iDrawing.GetText(Look::Normal, iContent), iDrawing.GetName())
        , pressed(iDrawing.GetText(Look::Pressed, iContent), iDrawing.GetName())
    {
    }

    SvgPictureC normal;
    SvgPictureC pressed;
};

std::optional<Size> findSize(const DrawingC& iDrawing, const SvgPictureC& iPicture, FindingsC& ioFindings)
{
    const xmlNode* root = iDrawing.GetElements().front();
    const std::optional<Size> size = iPicture.GetSize();
    if (!size) {
        iDrawing.AddError(root, "the drawing has no size: give its <svg> the width and height of the screen in pixels",
                          ioFindings);
        return std::nullopt;
    }
    if (size->width > largestSide || size->height > largestSide) {
        iDrawing.AddError(root,
                          "the drawing has " + std::to_string(size->width) + 'x' + std::to_string(size->height) +
                              " pixels, and no screen is larger than " + std::to_string(largestSide) + 'x' +
                              std::to_string(largestSide),
                          ioFindings);
        return std::nullopt;
    }
    return size;
}

std::optional<Rectangle> unite(const std::optional<Rectangle>& iFirst, const std::optional<Rectangle>& iSecond)
{
    if (!iFirst || !iSecond) {
        return iFirst ? iFirst : iSecond;
    }
    const std::uint32_t left = std::min(iFirst->x, iSecond->x);
    const std::uint32_t top = std::min(iFirst->y, iSecond->y);
    return Rectangle{left, top, std::max(iFirst->x + iFirst->width, iSecond->x + iSecond->width) - left,
                     std::max(iFirst->y + iFirst->height, iSecond->y + iSecond->height) - top};
}

void measure(const DrawingC& iDrawing, const Looks& iLooks, const Size& iSize, std::vector<DrawnButton>& ioButtons,
             FindingsC& ioFindings)
{
    for (DrawnButton& button : ioButtons) {
        const auto rectangle = unite(iLooks.normal.Measure(button.id, iSize), iLooks.pressed.Measure(button.id, iSize));
        if (rectangle) {
            button.rectangle = *rectangle;
        } else {
            const bool outside = iLooks.normal.HasPlace(button.id) || iLooks.pressed.HasPlace(button.id);
            iDrawing.AddError(button.element,
                              '"' + button.id + "\" draws nothing " +
                                  (outside ? "that is seen on the screen" : "in either skin"),
                              ioFindings);
        }
    }
}

CanvasC draw(const SvgPictureC& iPicture, const Size& iSize)
{
    CanvasC canvas(iSize);
    iPicture.Draw(canvas);
    return canvas;
}

// The folder as an absolute path, which keeps each "..": behind a symbolic link that is not the folder before it.
std::string placeOf(const std::string& iFolder)
{
    std::filesystem::path place;
    for (const std::filesystem::path& part : std::filesystem::absolute(iFolder)) {
        if (part != ".") {
            place /= part;
        }
    }
    return place.string();
}

void write(const Arguments& iArguments, const std::vector<DrawnButton>& iButtons, CanvasC& ioNormal, CanvasC& ioPressed)
{
    const auto [normal, pressed] = encodeSkins(ioNormal, ioPressed, iArguments.skins, iArguments.pixelFormat);
    const std::string path = iArguments.path.empty() ? placeOf(iArguments.output) : iArguments.path;
    const std::string folder = path.substr(0, path.find_last_not_of('/') + 1) + '/';
    const std::string ending = iArguments.skins == SkinForm::Dfiff ? ".dfiff" : ".png";
    FileSetC files(iArguments.output);
    files.Add("normal" + ending, normal);
    files.Add("pressed" + ending, pressed);
    files.Add(themeName, makeThemeText(std::filesystem::path(iArguments.input).filename().string(),
                                       folder + "normal" + ending, folder + "pressed" + ending, iButtons));
    files.PutInPlace();
}

} // namespace

std::optional<std::string> makeTheme(const Arguments& iArguments, FindingsC& ioFindings)
{
    DrawingC drawing(iArguments.input);
    if (!drawing.Load(ioFindings)) {
        return std::nullopt;
    }
    FontWatchC fonts;
    const Looks looks(drawing, Content::All);
    std::vector<DrawnButton> buttons = findButtons(drawing, ioFindings);
    const std::optional<Size> size = findSize(drawing, looks.normal, ioFindings);
    DrawingCheckC check(drawing, fonts, ioFindings);
    check.CheckImages();
    check.CheckTexts(looks.normal);
    check.CheckTexts(looks.pressed);
    if (!size) {
        return std::nullopt;
    }
    measure(drawing, Looks(drawing, Content::Shapes), *size, buttons, ioFindings);
    CanvasC normal = draw(looks.normal, *size);
    CanvasC pressed = draw(looks.pressed, *size);
    check.CheckDrawn();
    if (ioFindings.HasErrors()) {
        return std::nullopt;
    }
    write(iArguments, buttons, normal, pressed);
    return (std::filesystem::path(iArguments.output) / themeName).string();
}

} // namespace PEBBLETON
