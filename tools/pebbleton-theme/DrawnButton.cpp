#include "DrawnButton.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>

namespace PEBBLETON
{

namespace
{

struct Kind {
    const char* prefix;
    bool isLongPress;
};

constexpr Kind kinds[] = {{"button-", false}, {"long-press-", true}};

std::optional<std::uint32_t> readCode(const std::string& iText)
{
    constexpr std::uint64_t largest = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t code = 0;
    for (const char digit : iText) {
        if (digit < '0' || digit > '9' || code > largest) {
            return std::nullopt;
        }
        code = code * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return iText.empty() || code > largest ? std::nullopt : std::optional(static_cast<std::uint32_t>(code));
}

const Kind* findKind(const std::string& iId)
{
    const auto* const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                          [&](const Kind& iKind) { return iId.rfind(iKind.prefix, 0) == 0; });
    return kind == std::end(kinds) ? nullptr : kind;
}

// One more button, if its id has a code that no other one has.
void add(const DrawingC& iDrawing, DrawnButton iButton, const Kind& iKind, std::vector<DrawnButton>& ioButtons,
         FindingsC& ioFindings)
{
    const std::string prefix = iKind.prefix;
    const auto code = readCode(iButton.id.substr(prefix.size()));
    if (!code) {
        iDrawing.AddError(iButton.element,
                          "the id \"" + iButton.id + "\" has no code: after \"" + prefix +
                              "\" stands a number from 0 to 4294967295, best up to 40",
                          ioFindings);
        return;
    }
    iButton.code = *code;
    const auto first = std::find_if(ioButtons.begin(), ioButtons.end(),
                                    [&](const DrawnButton& iOther) { return iOther.code == iButton.code; });
    if (first == ioButtons.end()) {
        ioButtons.push_back(iButton);
        return;
    }
    iDrawing.AddError(iButton.element,
                      "the code of \"" + iButton.id + "\" is that of \"" + first->id + "\" in line " +
                          std::to_string(DrawingC::GetLine(first->element)) + ": give each button a code of its own",
                      ioFindings);
}

bool isWithinText(const xmlNode* iElement)
{
    const xmlNode* around = iElement->parent;
    while (around->type == XML_ELEMENT_NODE && !DrawingC::IsSvg(around, "text")) {
        around = around->parent;
    }
    return around->type == XML_ELEMENT_NODE;
}

} // namespace

bool isButtonId(const std::string& iId)
{
    return findKind(iId) != nullptr;
}

std::vector<DrawnButton> findButtons(const DrawingC& iDrawing, FindingsC& ioFindings)
{
    std::vector<DrawnButton> buttons;
    bool found = false;
    for (const xmlNode* element : iDrawing.GetElements()) {
        const std::string id = DrawingC::GetAttribute(element, "id");
        const Kind* kind = findKind(id);
        if (kind != nullptr) {
            found = true;
            if (isWithinText(element)) {
                iDrawing.AddError(element, "\"" + id + "\" is a part of a text: give the id to all of it", ioFindings);
                continue;
            }
            add(iDrawing, {element, id, kind->isLongPress, 0, {}}, *kind, buttons, ioFindings);
        }
    }
    if (!found) {
        iDrawing.AddError(iDrawing.GetElements().front(),
                          "there is no button: give each the id button-CODE or long-press-CODE, as in \"button-1\"",
                          ioFindings);
    }
    return buttons;
}

} // namespace PEBBLETON
