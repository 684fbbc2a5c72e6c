#include "Trial.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

#include <directfb_version.h>
#include <sys/wait.h>

#include "Window.h"

namespace PEBBLETON
{

namespace
{

constexpr const char* fatalError = ") DirectFBError"; // after (#, or of DirectFB2 (!

// The entries whose code reaches the parent as iStatus.
std::string findButtons(const ThemeC& iTheme, int iStatus)
{
    std::string result;
    for (const auto& buttons : {iTheme.GetLongPressButtons(), iTheme.GetPushButtons()}) {
        for (const Entry& button : buttons) {
            if (static_cast<int>(button.code & 0xFFU) == iStatus) {
                result += (result.empty() ? "" : " or ") + describe(button);
            }
        }
    }
    return result;
}

void printFailure(const std::string& iEnd, const MessageFileC& iMessages)
{
    std::cout << "The menu failed: " << iEnd << '\n';
    for (const std::string& line : iMessages.GetLines()) {
        if (line.compare(0, 3, "(#)") == 0 || line.compare(0, 3, "(!)") == 0) {
            std::cout << printable(line) << '\n';
        }
    }
}

// Whether the menu said that DirectFB ended it, or ended with the status 255 for the theme: a code may be the same
// number.
bool hasFailed(const ThemeC& iTheme, int iStatus, const MessageFileC& iMessages)
{
    const std::vector<std::string> lines = iMessages.GetLines();
    return (iStatus == 255 && !iTheme.IsComplete()) ||
           std::any_of(lines.begin(), lines.end(),
                       [](const std::string& iLine) { return iLine.find(fatalError) == 2; });
}

bool printEnd(const ThemeC& iTheme, int iEnd, const MessageFileC& iMessages)
{
    if (WIFSIGNALED(iEnd)) {
        printFailure("signal " + std::to_string(WTERMSIG(iEnd)), iMessages);
        return false;
    }
    const int status = WEXITSTATUS(iEnd);
    const std::string buttons = findButtons(iTheme, status);
    if (buttons.empty() || hasFailed(iTheme, status, iMessages)) {
        printFailure("exit status " + std::to_string(status), iMessages);
        return false;
    }
    std::cout << "Exit status " << status << ": " << printable(buttons) << '\n';
    return true;
}

} // namespace

bool tryTheme(const InspectionC& iInspection)
{
    if (DIRECTFB_MAJOR_VERSION >= 2) {
        throw std::runtime_error("this tool is built with DirectFB2, which draws in no window; try the theme in a "
                                 "browser, in the page that this makes: pebbleton-theme preview " +
                                 printable(iInspection.GetName()) + " --output page.html");
    }
    if (!iInspection.GetTheme() || !iInspection.GetSurfaces().screen) {
        throw std::runtime_error("without the theme and its normal skin the size of the window is not known");
    }
    const Size& size = *iInspection.GetSurfaces().screen;
    WindowC window(size, "Pebbleton: " + iInspection.GetName());
    const MessageFileC messages;
    const std::string settings =
        "system=x11,mode=" + std::to_string(size.width) + 'x' + std::to_string(size.height) + ",quiet,no-cursor";
    ProcessC menu({"pebbleton", "-c", iInspection.GetName()}, {{"DISPLAY", window.GetDisplay()}, {"DFBARGS", settings}},
                  messages.GetFile(), -1);
    std::cout << "The menu is in the window: click a button, or hold anywhere for three seconds" << std::endl;
    const ProcessC& first = ProcessC::WaitForFirst(menu, window.GetProcess());
    if (&first != &menu || !window.IsOpen()) {
        std::cout << "The window was closed: nothing is chosen\n";
        return true;
    }
    return printEnd(*iInspection.GetTheme(), menu.GetStatus(), messages);
}

} // namespace PEBBLETON
