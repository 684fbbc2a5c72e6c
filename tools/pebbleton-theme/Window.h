#ifndef PEBBLETON_WINDOW_H
#define PEBBLETON_WINDOW_H

#include <memory>
#include <string>

#include "MessageFile.h"
#include "Process.h"
#include "Size.h"

namespace PEBBLETON
{

// A display of its own in a window of the desktop, by Xephyr: DirectFB crashes on a display with GLX, as a desktop has
// it.
class WindowC
{
public:
    // Throws std::runtime_error when there is no desktop or no Xephyr.
    WindowC(const Size& iSize, const std::string& iTitle);

    // What the programs in the window need as DISPLAY.
    const std::string& GetDisplay() const;

    ProcessC& GetProcess();

    // Whether programs can still come: not any more once its user has begun to close it.
    bool IsOpen() const;

private:
    MessageFileC mMessages;
    std::unique_ptr<ProcessC> mProcess;
    std::string mDisplay;
};

} // namespace PEBBLETON

#endif
