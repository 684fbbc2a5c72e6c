// virtual-panel NAME CODE[=MIN:MAX]...    makes a panel of these axes, keys and properties, with uinput
// virtual-panel NAME                      makes one of two fingers, 0 to 4095, that the kernel's hid-multitouch drives
//
// Prints a line once the kernel was told, which keeps it until standard input ends. Each line of that is one report.
// For the first kind it names the events in their order (ABS_X=100 BTN_TOUCH=1), for the second the one or two fingers,
// each with its number, whether it touches, and where (0:1:100:200 1:0:5:5).

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <linux/uhid.h>
#include <sstream>
#include <string>
#include <unistd.h>

namespace
{

using Bytes = std::basic_string<std::uint8_t>;

[[noreturn]] void fail(const std::string& iWhat)
{
    std::cerr << "virtual-panel: " << iWhat << ": " << std::strerror(errno) << '\n';
    std::exit(1);
}

unsigned codeOf(const std::string& iName)
{
    const int code = libevdev_event_code_from_code_name(iName.c_str());
    return code >= 0 ? static_cast<unsigned>(code) : (fail(iName), 0);
}

void enable(libevdev* ioModel, const std::string& iWord)
{
    const std::string name = iWord.substr(0, iWord.find('='));
    input_absinfo range = {};
    const bool axis = std::sscanf(iWord.c_str() + name.size(), "=%d:%d", &range.minimum, &range.maximum) == 2;
    const int property = libevdev_property_from_name(name.c_str());
    const int result = property >= 0 ? libevdev_enable_property(ioModel, static_cast<unsigned>(property))
                                     : libevdev_enable_event_code(ioModel, axis ? EV_ABS : EV_KEY, codeOf(name),
                                                                  axis ? &range : nullptr);
    if (result != 0) {
        fail(iWord);
    }
}

libevdev_uinput* makeUinputPanel(char* iArguments[])
{
    libevdev* const model = libevdev_new();
    libevdev_set_name(model, *iArguments);
    while (*++iArguments != nullptr) {
        enable(model, *iArguments);
    }
    libevdev_uinput* panel = nullptr;
    if (libevdev_uinput_create_from_device(model, LIBEVDEV_UINPUT_OPEN_MANAGED, &panel) != 0) {
        fail("/dev/uinput");
    }
    return panel;
}

void reportEvents(const libevdev_uinput* iPanel, const std::string& iLine)
{
    std::istringstream events(iLine);
    for (std::string event; events >> event;) {
        const std::string name = event.substr(0, event.find('='));
        const auto type = static_cast<unsigned>(libevdev_event_type_from_code_name(name.c_str()));
        libevdev_uinput_write_event(iPanel, type, codeOf(name), std::atoi(event.c_str() + name.size() + 1));
    }
    libevdev_uinput_write_event(iPanel, EV_SYN, SYN_REPORT, 0);
}

void send(int iUhid, const uhid_event& iEvent)
{
    if (write(iUhid, &iEvent, sizeof iEvent) < 0) {
        fail("/dev/uhid");
    }
}

int makeHidPanel(const char* iName)
{
    // A touch screen; of each finger: a bit whether it touches, its number, x, y; at last how many fingers the report
    // has.
    const Bytes screen = {0x05, 0x0d, 0x09, 0x04, 0xa1, 0x01};
    const Bytes finger = {0x05, 0x0d, 0x09, 0x22, 0xa1, 0x02, 0x09, 0x42, 0x15, 0x00, 0x25, 0x01,
                          0x75, 0x01, 0x95, 0x01, 0x81, 0x02, 0x95, 0x07, 0x81, 0x03, 0x09, 0x51,
                          0x25, 0x7f, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02, 0x05, 0x01, 0x09, 0x30,
                          0x26, 0xff, 0x0f, 0x75, 0x10, 0x81, 0x02, 0x09, 0x31, 0x81, 0x02, 0xc0};
    const Bytes count = {0x05, 0x0d, 0x09, 0x54, 0x25, 0x02, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02, 0xc0};
    const Bytes descriptor = screen + finger + finger + count;

    uhid_event event = {};
    event.type = UHID_CREATE2;
    std::snprintf(reinterpret_cast<char*>(event.u.create2.name), sizeof event.u.create2.name, "%s", iName);
    event.u.create2.bus = BUS_USB;
    event.u.create2.rd_size =
        static_cast<std::uint16_t>(descriptor.copy(event.u.create2.rd_data, HID_MAX_DESCRIPTOR_SIZE));
    const int uhid = open("/dev/uhid", O_RDWR | O_CLOEXEC);
    send(uhid, event);
    return uhid;
}

void reportFingers(int iUhid, const std::string& iLine)
{
    std::istringstream fingers(iLine);
    Bytes report;
    std::uint8_t count = 0;
    for (std::string finger; fingers >> finger; ++count) {
        unsigned id = 0;
        unsigned touches = 0;
        unsigned x = 0;
        unsigned y = 0;
        std::sscanf(finger.c_str(), "%u:%u:%u:%u", &id, &touches, &x, &y);
        for (const unsigned byte : {touches, id, x & 255, x >> 8, y & 255, y >> 8}) {
            report += static_cast<std::uint8_t>(byte);
        }
    }
    report.resize(12);
    report += count;

    uhid_event event = {};
    event.type = UHID_INPUT2;
    event.u.input2.size = static_cast<std::uint16_t>(report.copy(event.u.input2.data, UHID_DATA_MAX));
    send(iUhid, event);
}

} // namespace

int main(int argc, char* argv[])
{
    std::string line;
    if (argc > 2) {
        libevdev_uinput* const panel = makeUinputPanel(argv + 1);
        std::cout << "ready" << std::endl;
        while (std::getline(std::cin, line)) {
            reportEvents(panel, line);
        }
        libevdev_uinput_destroy(panel);
    } else {
        const int uhid = makeHidPanel(argc > 1 ? argv[1] : "");
        std::cout << "ready" << std::endl;
        while (std::getline(std::cin, line)) {
            reportFingers(uhid, line);
        }
    }
}
