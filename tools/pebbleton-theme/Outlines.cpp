#include "Outlines.h"

#include <algorithm>
#include <cstdint>

namespace PEBBLETON
{

namespace
{

constexpr double fontSize = 18;
constexpr double margin = 5; // around the code in its label, and from the label to the edge of the button

// DirectFB's numbers are signed: from 2147483648 on they count as negative.
double asSigned(std::uint32_t iNumber)
{
    return static_cast<std::int32_t>(iNumber);
}

} // namespace

OutlinesC::OutlinesC(CanvasC& ioCanvas)
    : mSize(ioCanvas.GetSize()), mSurface(ioCanvas.CreateSurface()), mContext(cairo_create(mSurface))
{
    cairo_select_font_face(mContext, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(mContext, fontSize);
}

OutlinesC::~OutlinesC()
{
    cairo_destroy(mContext);
    cairo_surface_destroy(mSurface);
}

// All edges first, so that none crosses a code.
void OutlinesC::Draw(const std::vector<Entry>& iButtons)
{
    for (const Entry& button : iButtons) {
        DrawEdge(button.rectangle);
    }
    for (const Entry& button : iButtons) {
        DrawCode(button);
    }
    cairo_surface_flush(mSurface);
}

// Three lines of a pixel each, the outermost of them on the outermost pixels of the button: one of them stands out.
void OutlinesC::DrawEdge(const Rectangle& iRectangle)
{
    cairo_set_line_width(mContext, 1);
    for (int line = 0; line < 3; ++line) {
        const double inset = line + 0.5;
        if (2 * inset > iRectangle.width || 2 * inset > iRectangle.height) {
            return;
        }
        if (line == 1) {
            cairo_set_source_rgb(mContext, 1, 0.85, 0);
        } else {
            cairo_set_source_rgb(mContext, 0, 0, 0);
        }
        cairo_rectangle(mContext, asSigned(iRectangle.x) + inset, asSigned(iRectangle.y) + inset,
                        iRectangle.width - 2 * inset, iRectangle.height - 2 * inset);
        cairo_stroke(mContext);
    }
}

void OutlinesC::DrawCode(const Entry& iButton)
{
    const std::string code = std::to_string(iButton.code);
    cairo_text_extents_t extents = {};
    cairo_text_extents(mContext, code.c_str(), &extents);
    Box label = {asSigned(iButton.rectangle.x) + margin, asSigned(iButton.rectangle.y) + margin,
                 extents.x_advance + 2 * margin, fontSize + margin};
    FindRoom(label);
    mLabels.push_back(label);

    cairo_rectangle(mContext, label.x, label.y, label.width, label.height);
    cairo_set_source_rgb(mContext, 0, 0, 0);
    cairo_fill(mContext);
    cairo_set_source_rgb(mContext, 1, 0.85, 0);
    cairo_rectangle(mContext, label.x + 0.5, label.y + 0.5, label.width - 1, label.height - 1);
    cairo_stroke(mContext);
    cairo_move_to(mContext, label.x + margin, label.y + (label.height - extents.height) / 2 - extents.y_bearing);
    cairo_show_text(mContext, code.c_str());
}

// On the screen, even if the button is not, and below the labels that are already there; at the bottom it goes on in
// the next column. Without room anywhere the label stays where it was to be.
void OutlinesC::FindRoom(Box& ioLabel) const
{
    ioLabel.x = std::max(0.0, std::min(ioLabel.x, mSize.width - ioLabel.width));
    ioLabel.y = std::max(0.0, std::min(ioLabel.y, mSize.height - ioLabel.height));
    const Box wanted = ioLabel;
    double top = wanted.y;
    bool fromLeft = false;
    for (const Box* other = FindCovered(ioLabel); other != nullptr; other = FindCovered(ioLabel)) {
        ioLabel.y = other->y + other->height;
        if (ioLabel.y + ioLabel.height <= mSize.height) {
            continue;
        }
        ioLabel.x += ioLabel.width;
        if (ioLabel.x + ioLabel.width > mSize.width) {
            if (fromLeft) {
                ioLabel = wanted;
                return;
            }
            fromLeft = true;
            top = 0;
            ioLabel.x = 0;
        }
        ioLabel.y = top;
    }
}

const OutlinesC::Box* OutlinesC::FindCovered(const Box& iLabel) const
{
    const auto covered = std::find_if(mLabels.begin(), mLabels.end(), [&](const Box& iOther) {
        return iLabel.x < iOther.x + iOther.width && iOther.x < iLabel.x + iLabel.width &&
               iLabel.y < iOther.y + iOther.height && iOther.y < iLabel.y + iLabel.height;
    });
    return covered == mLabels.end() ? nullptr : &*covered;
}

} // namespace PEBBLETON
