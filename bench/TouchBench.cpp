// touch-bench SECONDS, run by pebbleton-touch
//
// Makes a multi-touch panel, touches it, and prints as JSON how long the adapter that runs this takes from a report of
// that panel to its own, by the kernel's clock; then, over so many seconds without a touch, how often it wakes up, and
// its memory.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <glob.h>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <poll.h>
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

// The adapter's panel, opened to be read with time stamps of the monotonic clock.
int openAdaptersPanel()
{
    glob_t found = {};
    glob("/dev/input/event*", 0, nullptr, &found);
    for (std::size_t i = 0; i < found.gl_pathc; ++i) {
        const int device = open(found.gl_pathv[i], O_RDONLY | O_NONBLOCK);
        libevdev* events = nullptr;
        if (libevdev_new_from_fd(device, &events) == 0 &&
            libevdev_get_name(events) == std::string("Pebbleton touch panel") &&
            libevdev_set_clock_id(events, CLOCK_MONOTONIC) == 0) {
            return device;
        }
    }
    fail("this is not run by pebbleton-touch");
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

// A number out of the adapter's /proc/PID/status.
long statusOfAdapter(const std::string& iName)
{
    std::ifstream status("/proc/" + std::to_string(getppid()) + "/status");
    for (std::string word; status >> word;) {
        long value = 0;
        if (word == iName + ':' && status >> value) {
            return value;
        }
    }
    fail("/proc does not tell");
}

long wakeUpsOfAdapter()
{
    return statusOfAdapter("voluntary_ctxt_switches") + statusOfAdapter("nonvoluntary_ctxt_switches");
}

} // namespace

int main(int argc, char* argv[])
{
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    const libevdev_uinput* panel = makePanel();
    const int device = openAdaptersPanel();
    for (int number = 0; touch(panel, device, number) < 0; ++number) {
        if (number == 100) {
            fail("the adapter does not take the panel");
        }
    }
    std::vector<double> took(touches);
    std::generate(took.begin(), took.end(), [&, number = 0]() mutable { return touch(panel, device, number++); });
    std::sort(took.begin(), took.end());

    const long wakeUpsBefore = wakeUpsOfAdapter();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    std::printf("{\"touches\": %d, \"lost\": %d, \"median_us\": %.0f, \"p95_us\": %.0f, \"idle_s\": %d, \"wake_ups\": "
                "%ld, "
                "\"resident_kib\": %ld}\n",
                touches,
                static_cast<int>(std::count_if(took.begin(), took.end(), [](double iTime) { return iTime < 0; })),
                took[touches / 2], took[touches * 95 / 100], seconds, wakeUpsOfAdapter() - wakeUpsBefore,
                statusOfAdapter("VmRSS"));
    return 0;
}
