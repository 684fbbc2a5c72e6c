#include "Window.h"

#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace PEBBLETON
{

namespace
{

// The number that the X server writes, and a line end; nothing when it fails.
std::string readDisplayNumber(int iFile)
{
    std::string number;
    char character = '\0';
    while (read(iFile, &character, 1) == 1 && character != '\n') {
        number += character;
    }
    return character == '\n' ? number : "";
}

} // namespace

WindowC::WindowC(const Size& iSize, const std::string& iTitle)
{
    const char* desktop = std::getenv("DISPLAY");
    if (desktop == nullptr || *desktop == '\0') {
        throw std::runtime_error("there is no desktop for a window: DISPLAY is not set");
    }
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("there can be no pipe");
    }
    mProcess =
        std::make_unique<ProcessC>(std::vector<std::string>{"Xephyr", "-screen",
                                                            std::to_string(iSize.width) + 'x' +
                                                                std::to_string(iSize.height),
                                                            "-title", iTitle, "-displayfd", std::to_string(ends[1]),
                                                            "-extension", "GLX", "-nolisten", "tcp", "-noreset"},
                                   ProcessC::Environment(), mMessages.GetFile(), ends[1]);
    close(ends[1]);
    const std::string number = readDisplayNumber(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        const auto lines = mMessages.GetLines();
        throw std::runtime_error("Xephyr opens no window" + (lines.empty() ? "" : ": " + lines.back()));
    }
    mDisplay = ':' + number;
}

const std::string& WindowC::GetDisplay() const
{
    return mDisplay;
}

ProcessC& WindowC::GetProcess()
{
    return *mProcess;
}

bool WindowC::IsOpen() const
{
    xcb_connection_t* connection = xcb_connect(mDisplay.c_str(), nullptr);
    const bool open = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return open;
}

} // namespace PEBBLETON
