#include "ThemeText.h"

#include "Findings.h"
#include "Theme.h"

namespace PEBBLETON
{

namespace
{

std::string quote(const std::string& iText)
{
    std::string result = "\"";
    for (const char character : iText) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character == '\n' ? "\\n" : character == '\r' ? "\\r" : std::string(1, character);
    }
    return result + '"';
}

std::string makeSection(const char* iName, bool iLongPress, const std::vector<DrawnButton>& iButtons)
{
    std::string text = std::string(iName) + "\n{\n";
    for (auto button = iButtons.rbegin(); button != iButtons.rend(); ++button) {
        if (button->isLongPress == iLongPress) {
            const Rectangle& place = button->rectangle;
            text += "    button " + std::to_string(button->code) + ':' + std::to_string(place.x) + ':' +
                    std::to_string(place.y) + ':' + std::to_string(place.width) + ':' + std::to_string(place.height) +
                    '\n';
        }
    }
    return text + "}\n";
}

} // namespace

std::string makeThemeText(const std::string& iDrawing, const std::string& iNormalPath, const std::string& iPressedPath,
                          const std::vector<DrawnButton>& iButtons)
{
    return "; Made by pebbleton-theme from " + printable(iDrawing) +
           ".\n; Each button is code:x:y:width:height in screen pixels; the code is the exit status.\n"
           "image\n{\n    normal " +
           quote(iNormalPath) + "\n    pressed " + quote(iPressedPath) + "\n}\n" +
           "; Fires on a touch held for three seconds, wherever it lies.\n" +
           makeSection(ThemeC::longPressSection, true, iButtons) +
           "; Where two overlap, the first one fires: the one on top comes before the other.\n" +
           makeSection(ThemeC::pushSection, false, iButtons);
}

} // namespace PEBBLETON
