// standing-time PROGRAM [ARGUMENT...]
//
// Starts the program on the X display and prints after how many milliseconds its picture stands, the milliseconds of
// processor time and the KiB of memory that it has used when it has stood for a while. A picture stands from the last
// change of the screen on, looked at every two milliseconds; that asks nothing of the program and knows nothing of its
// picture.

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <thread>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto glance = std::chrono::milliseconds(2);
constexpr auto stillness = std::chrono::milliseconds(700);
constexpr unsigned patience = 20; // seconds

// A number that tells one sight of the screen from another.
std::size_t lookAt(Display* iDisplay)
{
    const int screen = DefaultScreen(iDisplay);
    XImage* image =
        XGetImage(iDisplay, RootWindow(iDisplay, screen), 0, 0, static_cast<unsigned>(DisplayWidth(iDisplay, screen)),
                  static_cast<unsigned>(DisplayHeight(iDisplay, screen)), AllPlanes, ZPixmap);
    const auto size = static_cast<std::size_t>(image->bytes_per_line) * static_cast<std::size_t>(image->height);
    const std::size_t sight = std::hash<std::string_view>()({image->data, size});
    XDestroyImage(image);
    return sight;
}

// Waits until the screen has changed from the given sight and is still; returns when that began.
Clock::time_point waitForPicture(Display* iDisplay, std::size_t iBefore)
{
    Clock::time_point lastChange;
    for (std::size_t sight = iBefore; sight == iBefore || Clock::now() - lastChange < stillness;) {
        const std::size_t now = lookAt(iDisplay);
        if (now != sight) {
            sight = now;
            lastChange = Clock::now();
        }
        std::this_thread::sleep_for(glance);
    }
    return lastChange;
}

double milliseconds(const timeval& iTime)
{
    return static_cast<double>(iTime.tv_sec) * 1e3 + static_cast<double>(iTime.tv_usec) / 1e3;
}

} // namespace

int main(int argc, char* argv[])
{
    Display* const display = argc > 1 ? XOpenDisplay(nullptr) : nullptr;
    if (display == nullptr) {
        std::fputs("Usage: standing-time PROGRAM [ARGUMENT...], with a display\n", stderr);
        return EXIT_FAILURE;
    }
    const std::size_t emptyScreen = lookAt(display);
    alarm(patience); // no picture comes to stand, or goes
    const Clock::time_point begin = Clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return EXIT_FAILURE;
    }
    const Milliseconds standing = waitForPicture(display, emptyScreen) - begin;
    kill(child, SIGKILL); // nobody's way to end may count
    rusage usage = {};
    wait4(child, nullptr, 0, &usage);
    while (lookAt(display) != emptyScreen) {
        std::this_thread::sleep_for(glance);
    }
    std::printf("%.1f %.1f %ld\n", standing.count(), milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime),
                usage.ru_maxrss);
    XCloseDisplay(display);
    return EXIT_SUCCESS;
}
