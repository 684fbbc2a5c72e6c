#include "Page.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>

#include "Canvas.h"
#include "PageTemplate.h"

namespace PEBBLETON
{

namespace
{

std::string encodeBase64(std::string iBytes)
{
    namespace iterators = boost::archive::iterators;
    using Encoder = iterators::base64_from_binary<iterators::transform_width<std::string::const_iterator, 6, 8>>;
    const std::size_t padding = (3 - iBytes.size() % 3) % 3;
    iBytes.append(padding, '\0');
    std::string result(Encoder(iBytes.cbegin()), Encoder(iBytes.cend()));
    return result.replace(result.size() - padding, padding, padding, '=');
}

// A string of JSON that may stand in a script of a page: no text of a theme ends the script.
std::string quote(const std::string& iText)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char character : iText) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || character == '"' || character == '\\' || character == '<') {
            result += {'\\', 'u', '0', '0', digits[byte / 16U], digits[byte % 16U]};
        } else {
            result += character;
        }
    }
    return result + '"';
}

std::string field(const std::string& iName, const std::string& iValue)
{
    return quote(iName) + ':' + iValue;
}

std::string field(const std::string& iName, std::uint32_t iValue)
{
    return field(iName, std::to_string(iValue));
}

std::string describeSize(const Size& iSize)
{
    return '{' + field("width", iSize.width) + ',' + field("height", iSize.height) + '}';
}

std::string describePicture(const std::optional<Skin>& iSkin, const Size& iSize)
{
    CanvasC canvas(iSize);
    if (iSkin) {
        canvas.Show(*iSkin);
    }
    return quote("data:image/png;base64," + encodeBase64(canvas.EncodePng()));
}

std::string describeButtons(const std::vector<Entry>& iButtons)
{
    std::string result;
    for (const Entry& button : iButtons) {
        const Rectangle& rectangle = button.rectangle;
        result += std::string(result.empty() ? "" : ",") + '{' + field("code", button.code) + ',' +
                  field("x", rectangle.x) + ',' + field("y", rectangle.y) + ',' + field("width", rectangle.width) +
                  ',' + field("height", rectangle.height) + '}';
    }
    return '[' + result + ']';
}

std::string describeEnd(const std::string& iOutcome, std::size_t iAfter)
{
    return '{' + field("outcome", quote(iOutcome)) + ',' + field("after", std::to_string(iAfter)) + '}';
}

// How the menu ends at start by what it reads, and after how many push buttons, as any of them may end it before by its
// place.
std::string describeStart(const InspectionC& iInspection)
{
    const std::string failed = "exit status 255";
    const ThemeC& theme = *iInspection.GetTheme();
    if (!iInspection.HasPaths()) {
        return describeEnd(failed, 0);
    }
    if (!iInspection.GetSkinOutcome().empty()) {
        return describeEnd(iInspection.GetSkinOutcome(), 0);
    }
    if (theme.GetLongPressButtons().size() < theme.GetLongPressEntries().size()) {
        return describeEnd(failed, 0);
    }
    const std::vector<Entry>& entries = theme.GetPushEntries();
    const auto refused =
        std::find_if(entries.begin(), entries.end(), [](const Entry& iEntry) { return !iEntry.accepted; });
    return refused == entries.end() ? "null" : describeEnd(failed, static_cast<std::size_t>(refused - entries.begin()));
}

std::string describeErrors(const std::vector<std::string>& iLines)
{
    std::string result;
    for (const std::string& line : iLines) {
        result += (result.empty() ? "" : ",") + quote(line);
    }
    return '[' + result + ']';
}

std::string describeTheme(const InspectionC& iInspection)
{
    const std::string& name = iInspection.GetName();
    const Surfaces& surfaces = iInspection.GetSurfaces();
    const Size& screen = *surfaces.screen;
    return '{' + field("name", quote(name.substr(name.rfind('/') + 1))) + ',' + field("screen", describeSize(screen)) +
           ',' + field("normal", describePicture(surfaces.normal, screen)) + ',' +
           field("normalSize", describeSize(surfaces.normal ? surfaces.normal->size : screen)) + ',' +
           field("pressedSize", describeSize(surfaces.pressed ? surfaces.pressed->size : screen)) + ',' +
           field("end", describeStart(iInspection)) + ',' +
           field("errors", describeErrors(iInspection.GetFindings().GetErrors())) + ',' +
           field("pressed", describePicture(surfaces.pressed, screen)) + ',' +
           field("longPress", describeButtons(iInspection.GetTheme()->GetLongPressButtons())) + ',' +
           field("push", describeButtons(iInspection.GetTheme()->GetPushButtons())) + '}';
}

} // namespace

std::string makePage(const InspectionC& iInspection)
{
    const std::string token = "@THEME@";
    std::string page = pageTemplate;
    return page.replace(page.find(token), token.size(), describeTheme(iInspection));
}

} // namespace PEBBLETON
