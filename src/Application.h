#ifndef PEBBLETON_APPLICATION_H
#define PEBBLETON_APPLICATION_H

#include <cstdint>
#include <string>
#include <vector>

#include "IWidget.h"
#include "Rectangle.h"
#include "Viewer.h"

namespace PEBBLETON
{

class ConfigHelperC;

// Reads one button entry, "code:x:y:width:height" in decimal numbers. White space may stand before a number, and
// anything after the last one; signs and numbers beyond 32 bits are what the C library makes of them. False: fewer than
// five numbers; what was read of them may already stand in the outputs.
bool ReadButtonEntry(const std::string& iEntry, std::uint32_t& ioCode, Rectangle& ioRectangle);

// The menu: one display and the widgets on it.
//
// Constructed with the screen taken and nothing on it; Init, called once, builds the menu from the theme file; Run,
// called only after Init returned true, lets the user choose.
class ApplicationC
{
public:
    // Keeps the pointer: iConfigPath must stay as it is for the life of the application.
    explicit ApplicationC(const char* iConfigPath);

    // Deletes the widgets in the order of their creation, before the display is closed.
    ~ApplicationC();
    ApplicationC(const ApplicationC&) = delete;
    ApplicationC& operator=(const ApplicationC&) = delete;

    // True: the menu stands, possibly without any widget. False: the log says what was wrong; the screen and the
    // widgets stay as far as they got.
    bool Init();

    // Offers every input to the widgets in list order until one fires, and returns that one's exit code. Nothing else
    // ends it: with no widget it never returns. Called again, it goes on with the next input.
    std::uint32_t Run();

private:
    bool ShowSkin(const ConfigHelperC& iConfig);
    bool CreateAllWidgets(const ConfigHelperC& iConfig);
    bool CreateWidgets(const ConfigHelperC& iConfig, const char* iSection);
    IWidget* CreateWidget(const char* iSection, std::uint32_t iCode, const Rectangle& iRectangle);

    const char* mConfigPath; // not owned
    Viewer mViewer;
    std::vector<IWidget*> mWidgets; // owned; long-press buttons before push buttons, each in file order
};

} // namespace PEBBLETON

#endif
