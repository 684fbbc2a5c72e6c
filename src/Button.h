#ifndef PEBBLETON_BUTTON_H
#define PEBBLETON_BUTTON_H

#include <cstdint>

#include "IWidget.h"

namespace PEBBLETON
{

class Viewer;

// A push button: it is drawn pressed while a touch that went down inside it stays inside it, and fires when that touch
// is lifted inside it. Any event outside cancels the touch.
//
// The far edges of the rectangle belong to the button, so a width of 100 accepts 101 columns. A rectangle whose far
// edge wraps around 2^32 accepts nothing.
class ButtonC : public IWidget
{
public:
    // Draws the button released at once. iViewer must outlive the button.
    ButtonC(std::uint32_t iCode, Viewer* iViewer, const Rectangle& iRectangle);

    // Repaints only when the pressed state changes.
    bool HandleEvent(const InputEvent& iEvent) override;
    const Rectangle& GetRectangle() const override;
    std::uint32_t GetExitCode() const override;
    bool IsPressed() const override;

private:
    bool Contains(std::uint32_t iX, std::uint32_t iY) const;

    std::uint32_t mCode;
    Viewer* mViewer; // not owned
    Rectangle mRectangle;
    bool mPressed;
};

} // namespace PEBBLETON

#endif
