#include "LayoutCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>

#include "EntryText.h"

namespace PEBBLETON
{

namespace
{

// The menu counts 32 bits a pixel, and in signed numbers as DirectFB does.
constexpr std::int64_t bytesPerPixel = 4;
constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t megabyte = std::int64_t{1024} * 1024;

// One direction of a rectangle or a surface.
struct Span {
    std::int64_t start;
    std::int64_t length;
};

// The surfaces that a rectangle reaches beyond, by the number of pixels.
using Overhangs = std::map<std::int64_t, std::vector<std::string>>;

struct Direction {
    const char* farEdge;
    const char* nearEdge;
    const char* start; // with its article
    const char* place; // start and length
    const char* length;
    Span button;
    std::int64_t room; // on the smallest of the surfaces
    Overhangs overhangs;
};

std::int64_t asSigned(std::uint32_t iNumber)
{
    return static_cast<std::int32_t>(iNumber);
}

bool fitsMemory(const Rectangle& iRectangle)
{
    const std::int64_t width = iRectangle.width;
    const std::int64_t height = iRectangle.height;
    return asSigned(iRectangle.x) + width <= limit && asSigned(iRectangle.y) + height <= limit && width <= limit &&
           height <= limit && bytesPerPixel * width <= limit && bytesPerPixel * width * height <= limit;
}

bool wrapsAround(const Rectangle& iRectangle)
{
    return iRectangle.x + iRectangle.width < iRectangle.x || iRectangle.y + iRectangle.height < iRectangle.y;
}

// Touches lie on the screen.
bool isBeyond(const Rectangle& iRectangle, const std::optional<Size>& iScreen)
{
    return wrapsAround(iRectangle) || (iScreen && (iRectangle.x >= iScreen->width || iRectangle.y >= iScreen->height));
}

std::string join(const std::vector<std::string>& iWords)
{
    std::string result;
    for (std::size_t i = 0; i < iWords.size(); ++i) {
        result += i == 0 ? "" : i + 1 == iWords.size() ? " and " : ", ";
        result += iWords[i];
    }
    return result;
}

std::string pixels(std::int64_t iCount)
{
    return std::to_string(iCount) + (iCount == 1 ? " pixel" : " pixels");
}

// Whether the number, counted from 0, is written with a minus.
bool hasMinus(const Entry& iButton, std::size_t iNumber)
{
    const EntryTextC text(iButton.value);
    return iNumber < text.GetNumbers().size() && text.GetNumbers()[iNumber][0] == '-';
}

void measure(Direction& ioDirection, const std::string& iName, std::uint32_t iLength)
{
    const std::int64_t overhang = ioDirection.button.start + ioDirection.button.length - iLength;
    ioDirection.room = std::min(ioDirection.room, std::int64_t{iLength});
    if (overhang > 0) {
        ioDirection.overhangs[overhang].push_back(iName);
    }
}

std::string describeOverhangs(const Direction& iDirection)
{
    std::vector<std::string> parts;
    for (const auto& [overhang, names] : iDirection.overhangs) {
        parts.push_back(std::string("over the ") + iDirection.farEdge + " edge of " + join(names) + " by " +
                        pixels(overhang));
    }
    return join(parts);
}

std::string advise(const Direction& iDirection)
{
    std::vector<std::string> ways;
    if (iDirection.button.length <= iDirection.room) {
        ways.push_back(std::string(iDirection.start) + " of at most " +
                       std::to_string(iDirection.room - iDirection.button.length));
    }
    if (iDirection.button.start < iDirection.room) {
        ways.push_back(std::string("a ") + iDirection.length + " of at most " +
                       std::to_string(iDirection.room - iDirection.button.start));
    }
    return ways.empty()       ? std::string("the right ") + iDirection.place
           : ways.size() == 1 ? ways[0]
                              : ways[0] + " or " + ways[1];
}

// What two ranges have in common, the far edges not included; a length of 0 or less: nothing.
Span intersect(const Span& iFirst, const Span& iSecond)
{
    const std::int64_t start = std::max(iFirst.start, iSecond.start);
    return {start, std::min(iFirst.start + iFirst.length, iSecond.start + iSecond.length) - start};
}

} // namespace

LayoutCheckC::LayoutCheckC(const Surfaces& iSurfaces, FindingsC& ioFindings)
    : mSurfaces(iSurfaces), mFindings(ioFindings)
{
}

void LayoutCheckC::Run(const std::vector<Entry>& iButtons)
{
    for (const Entry& button : iButtons) {
        CheckPlace(button);
    }
    for (auto second = iButtons.begin(); second != iButtons.end(); ++second) {
        for (auto first = iButtons.begin(); first != second; ++first) {
            CheckPair(*first, *second);
        }
    }
}

void LayoutCheckC::CheckPlace(const Entry& iButton)
{
    const Rectangle& rectangle = iButton.rectangle;
    if (rectangle.width == 0 || rectangle.height == 0) {
        mFindings.AddWarning(
            describe(iButton) + " has no " +
            (rectangle.width != 0    ? "height"
             : rectangle.height != 0 ? "width"
                                     : "width and no height") +
            ": the menu never draws it, " +
            (isBeyond(rectangle, mSurfaces.screen) ? "and no touch reaches it" : "although a touch may fire it"));
    } else if (!fitsMemory(rectangle)) {
        mFindings.AddError(describe(iButton) + " is a rectangle that no memory holds: the menu never draws it" +
                           (wrapsAround(rectangle) ? ", and no touch reaches it" : "") +
                           "; give it the place of the button in the picture");
    } else {
        CheckEdges(iButton);
    }
}

void LayoutCheckC::CheckEdges(const Entry& iButton)
{
    const Rectangle& rectangle = iButton.rectangle;
    Direction directions[] = {
        {"right", "left", "an x", "x and width", "width", {asSigned(rectangle.x), rectangle.width}, limit, {}},
        {"bottom", "top", "a y", "y and height", "height", {asSigned(rectangle.y), rectangle.height}, limit, {}},
    };
    const auto measureAll = [&](const char* iName, const Size& iSize) {
        measure(directions[0], iName, iSize.width);
        measure(directions[1], iName, iSize.height);
    };
    if (mSurfaces.screen) {
        measureAll("the screen", *mSurfaces.screen);
    }
    if (mSurfaces.normal) {
        measureAll("the normal skin", mSurfaces.normal->size);
    }
    const bool atStart = std::any_of(std::begin(directions), std::end(directions), [](const Direction& iDirection) {
        return iDirection.button.start < 0 || !iDirection.overhangs.empty();
    });
    if (mSurfaces.pressed) {
        measureAll("the pressed skin", mSurfaces.pressed->size);
    }
    std::vector<std::string> reaches;
    std::vector<std::string> advice;
    for (const Direction& direction : directions) {
        if (direction.button.start < 0) {
            const bool hasSign = hasMinus(iButton, &direction == &directions[0] ? 1 : 2);
            reaches.push_back(std::string("over the ") + direction.nearEdge + " edge by " +
                              pixels(-direction.button.start) +
                              (hasSign ? "" : ", since numbers from 2147483648 on count as negative"));
            advice.push_back(std::string(direction.start) + " of 0 or more");
        }
        if (!direction.overhangs.empty()) {
            reaches.push_back(describeOverhangs(direction));
            advice.push_back(advise(direction));
        }
    }
    if (reaches.empty()) {
        return;
    }
    const std::int64_t size = bytesPerPixel * rectangle.width * rectangle.height / megabyte;
    mFindings.AddError(
        describe(iButton) + " reaches " + join(reaches) + ": the menu ends with the status 176 when it " +
        (atStart ? "starts" : "is touched there") +
        (size < 100 ? "" : ", if it has " + std::to_string(size) + " MB of memory for it, else by a signal") +
        "; give it " + join(advice));
}

// A button is drawn up to its far edges and touched on them.
void LayoutCheckC::CheckPair(const Entry& iFirst, const Entry& iSecond)
{
    const Rectangle& first = iFirst.rectangle;
    const Rectangle& second = iSecond.rectangle;
    if (wrapsAround(first) || wrapsAround(second)) {
        return;
    }
    const Span across = intersect({first.x, std::int64_t{first.width} + 1}, {second.x, std::int64_t{second.width} + 1});
    const Span down = intersect({first.y, std::int64_t{first.height} + 1}, {second.y, std::int64_t{second.height} + 1});
    const Span drawnAcross = intersect({first.x, first.width}, {second.x, second.width});
    const Span drawnDown = intersect({first.y, first.height}, {second.y, second.height});
    if (across.length <= 0 || down.length <= 0) {
        return;
    }
    const std::string both = describe(iSecond) + " and \"" + iFirst.name + ' ' + iFirst.value + "\" ";
    if (drawnAcross.length > 0 && drawnDown.length > 0) {
        mFindings.AddWarning(
            both + "overlap by " + std::to_string(drawnAcross.length) + 'x' + std::to_string(drawnDown.length) +
            " pixels at " + std::to_string(drawnAcross.start) + ',' + std::to_string(drawnDown.start) +
            ": a touch there presses both and fires the first one in the file; leave a pixel between them");
        return;
    }
    const bool column = drawnAcross.length <= 0;
    const bool row = drawnDown.length <= 0;
    mFindings.AddWarning(both + "share the " + (column ? "column " + std::to_string(across.start) : "") +
                         (column && row ? ", " : "") + (row ? "row " + std::to_string(down.start) : "") +
                         ", since touches count up to one pixel beyond the far edges: leave a pixel between them");
}

} // namespace PEBBLETON
