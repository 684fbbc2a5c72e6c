// standing-time COUNT PROGRAM [ARGUMENT...]
//
// Starts the program COUNT times on the X display and prints as JSON, as medians, how long its picture takes to stand,
// and what processor time and memory it has used when it has stood for a while. A picture stands from the last change
// of the screen on, looked at every two milliseconds; that asks nothing of the program and knows nothing of its
// picture.

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <thread>
#include <vector>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "Child.h"

namespace
{

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto glance = std::chrono::milliseconds(2);
constexpr auto stillness = std::chrono::milliseconds(700);
constexpr auto patience = std::chrono::seconds(20);

// The figures, run by run.
struct Series {
    std::vector<double> standing; // milliseconds
    std::vector<double> cpu;      // milliseconds
    std::vector<double> peak;     // KiB
};

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

// Gives up on a program that has gone on for too long.
void checkPatience(Clock::time_point iBegin, pid_t iChild)
{
    if (Clock::now() - iBegin > patience) {
        kill(iChild, SIGKILL);
        std::fputs("standing-time: no picture comes to stand, or goes\n", stderr);
        std::exit(EXIT_FAILURE);
    }
}

// Waits until the screen has changed from the given sight and is still; returns when that began.
Clock::time_point waitForPicture(Display* iDisplay, std::size_t iBefore, pid_t iChild)
{
    const Clock::time_point begin = Clock::now();
    Clock::time_point lastChange = begin;
    std::size_t sight = iBefore;
    while (sight == iBefore || Clock::now() - lastChange < stillness) {
        const std::size_t now = lookAt(iDisplay);
        if (now != sight) {
            sight = now;
            lastChange = Clock::now();
        }
        checkPatience(begin, iChild);
        std::this_thread::sleep_for(glance);
    }
    return lastChange;
}

void run(Series& ioSeries, Display* iDisplay, std::size_t iEmptyScreen, char* const iCommand[])
{
    const Clock::time_point begin = Clock::now();
    const pid_t child = start(iCommand);
    const Milliseconds standing = waitForPicture(iDisplay, iEmptyScreen, child) - begin;
    kill(child, SIGKILL); // nobody's way to end may count
    while (lookAt(iDisplay) != iEmptyScreen) {
        checkPatience(begin, child);
        std::this_thread::sleep_for(glance);
    }
    const Usage usage = finish(child);
    ioSeries.standing.push_back(standing.count());
    ioSeries.cpu.push_back(usage.cpu);
    ioSeries.peak.push_back(usage.peak);
}

} // namespace

int main(int argc, char* argv[])
{
    const int count = argc > 2 ? std::atoi(argv[1]) : 0;
    Display* display = count > 0 ? XOpenDisplay(nullptr) : nullptr;
    if (display == nullptr) {
        std::fputs("Usage: standing-time COUNT PROGRAM [ARGUMENT...], with a display\n", stderr);
        return EXIT_FAILURE;
    }
    const std::size_t emptyScreen = lookAt(display);
    Series warmUp; // so that it need not be read from the disk
    run(warmUp, display, emptyScreen, argv + 2);
    Series series;
    for (int i = 0; i < count; ++i) {
        run(series, display, emptyScreen, argv + 2);
    }
    std::printf("{\"runs\": %d, \"standing_ms\": %.1f, \"cpu_ms\": %.1f, \"peak_kib\": %.0f}\n", count,
                quantile(series.standing, 0.5), quantile(series.cpu, 0.5), quantile(series.peak, 0.5));
    XCloseDisplay(display);
    return EXIT_SUCCESS;
}
