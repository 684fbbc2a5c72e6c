// touch-bench DEVICE, while pebbleton-touch runs, whose panel that is
//
// Makes a multi-touch panel, touches it, and prints how long the adapter takes from a report of that panel to its own,
// by the kernel's clock. The panel stays, untouched, until this is ended.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include <fcntl.h>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

constexpr int touches = 1000;
constexpr int patience = 100; // milliseconds

[[noreturn]] void fail(const char* iWhat)
{
    std::fprintf(stderr, "touch-bench: %s\n", iWhat);
    std::exit(1);
}

double nowInMicroseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

libevdev_uinput* makePanel()
{
    libevdev* const model = libevdev_new();
    libevdev_set_name(model, "touch-bench");
    input_absinfo axis = {};
    axis.maximum = 4095;
    for (const unsigned code : {ABS_MT_POSITION_X, ABS_MT_POSITION_Y, ABS_MT_TRACKING_ID, ABS_MT_SLOT}) {
        libevdev_enable_event_code(model, EV_ABS, code, &axis);
        axis.maximum = code == ABS_MT_TRACKING_ID ? 4 : 4095;
    }
    libevdev_uinput* panel = nullptr;
    if (libevdev_uinput_create_from_device(model, LIBEVDEV_UINPUT_OPEN_MANAGED, &panel) != 0) {
        fail("no panel can be made");
    }
    return panel;
}

// Opened to be read with time stamps of the clock above.
int openAdaptersPanel(const char* iPath)
{
    const int device = open(iPath, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    int clock = CLOCK_MONOTONIC;
    if (device < 0 || ioctl(device, EVIOCSCLOCKID, &clock) != 0) {
        fail("the adapter's panel is not there");
    }
    return device;
}

// When the adapter reported the next press or release, in microseconds; 0 when it did not in good time.
double awaitButton(int iDevice)
{
    pollfd source = {iDevice, POLLIN, 0};
    while (poll(&source, 1, patience) > 0) {
        input_event event = {};
        while (read(iDevice, &event, sizeof event) == sizeof event) {
            if (event.type == EV_KEY) {
                return static_cast<double>(event.input_event_sec) * 1e6 + static_cast<double>(event.input_event_usec);
            }
        }
    }
    return 0;
}

// One touch, and how long the adapter took to say that it began; below 0 when it did not.
double touch(const libevdev_uinput* iPanel, int iDevice, int iNumber)
{
    libevdev_uinput_write_event(iPanel, EV_ABS, ABS_MT_TRACKING_ID, iNumber);
    libevdev_uinput_write_event(iPanel, EV_ABS, ABS_MT_POSITION_X, iNumber % 4096);
    libevdev_uinput_write_event(iPanel, EV_ABS, ABS_MT_POSITION_Y, iNumber % 4095);
    const double start = nowInMicroseconds();
    libevdev_uinput_write_event(iPanel, EV_SYN, SYN_REPORT, 0);
    const double took = awaitButton(iDevice) - start;
    libevdev_uinput_write_event(iPanel, EV_ABS, ABS_MT_TRACKING_ID, -1);
    libevdev_uinput_write_event(iPanel, EV_SYN, SYN_REPORT, 0);
    awaitButton(iDevice);
    return took;
}

} // namespace

int main(int argc, char* argv[])
{
    const libevdev_uinput* panel = makePanel();
    const int device = openAdaptersPanel(argc > 1 ? argv[1] : "");
    for (int number = 0; touch(panel, device, number) < 0; ++number) {
        if (number == 100) {
            fail("the adapter does not take the panel");
        }
    }
    std::vector<double> took(touches);
    std::generate(took.begin(), took.end(), [&, number = 0]() mutable { return touch(panel, device, number++); });
    std::sort(took.begin(), took.end());
    const auto lost = std::count_if(took.begin(), took.end(), [](double iTime) { return iTime < 0; });
    std::printf("from report to report, median %8.3f ms\n", took[touches / 2] / 1e3);
    std::printf("one in twenty takes at least  %8.3f ms\n", took[touches * 95 / 100] / 1e3);
    std::printf("lost, of %4d touches         %8d\n", touches, static_cast<int>(lost));
    std::fflush(stdout);
    pause();
    return EXIT_SUCCESS;
}
