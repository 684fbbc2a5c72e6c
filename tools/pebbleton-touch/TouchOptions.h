#ifndef PEBBLETON_TOUCH_TOUCH_OPTIONS_H
#define PEBBLETON_TOUCH_TOUCH_OPTIONS_H

#include <chrono>
#include <optional>
#include <string>

#include "ScreenMap.h"

namespace PEBBLETON
{

// The ranges of both axes of a panel.
struct PanelRange {
    AxisRange x;
    AxisRange y;
};

// What the command line asks for.
struct TouchOptions {
    bool help = false;
    bool version = false;
    std::string device;               // path or name of the panel; empty: any
    std::optional<ScreenSize> screen; // nothing: the frame buffer's, or the display's
    std::optional<PanelRange> range;  // nothing: what the panel reports
    Orientation orientation;
    bool print = false;
    bool otherDevices = false;     // whether DirectFB is to open them too
    std::chrono::seconds wait{60}; // for a display, where its size is not given
    char** command = nullptr;      // the command and its arguments: the end of argv, which stays the caller's
};

// Reads the command line up to the command, whose arguments are its own. False: it makes no sense, which is reported.
bool ParseTouchOptions(int argc, char* argv[], TouchOptions& ioOptions);

// Writes what the options are, or which version this is, to standard output. False: it cannot be written.
bool PrintTouchHelp();
bool printTouchVersion();

} // namespace PEBBLETON

#endif
