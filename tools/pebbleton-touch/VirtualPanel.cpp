#include "VirtualPanel.h"

#include <cerrno>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <glob.h>
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

#include "Log.h"
#include "Report.h"
#include "TouchTranslator.h"

namespace PEBBLETON
{

namespace
{

constexpr const char* uinputPath = "/dev/uinput";

const char* adviceFor(int iError)
{
    switch (iError) {
    case EACCES:
    case EPERM:
        return "run this as root, or as a user who may write to it";
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return "load the kernel's module for it: modprobe uinput";
    default:
        return "see what memory and file descriptors there are";
    }
}

} // namespace

VirtualPanelC::~VirtualPanelC()
{
    if (mDevice != nullptr) {
        libevdev_uinput_destroy(mDevice);
    }
    if (mUinput >= 0) {
        close(mUinput);
    }
}

bool VirtualPanelC::Open(const ScreenSize& iScreen)
{
    mUinput = open(uinputPath, O_RDWR | O_CLOEXEC);
    if (mUinput < 0) {
        Report(LOG_ERR, "%s cannot be opened (%s): %s", uinputPath, std::strerror(errno), adviceFor(errno));
        return false;
    }
    if (!Create(iScreen)) {
        return false;
    }
    // The kernel leaves out an axis whose value stays the same, and its first value is 0: so the first touch in column
    // or row 0 would come without it.
    Handle(EV_ABS, ABS_X, TouchTranslatorC::parked.x);
    Handle(EV_ABS, ABS_Y, TouchTranslatorC::parked.y);
    Handle(EV_SYN, SYN_REPORT, 0);
    return true;
}

// The library looked for the device once, when the panel was made. Where the folder is, it knows in any case.
std::string VirtualPanelC::FindDevice() const
{
    const char* const folder = libevdev_uinput_get_syspath(mDevice);
    return folder != nullptr ? FindDevice(folder, "/dev/input") : "";
}

std::string VirtualPanelC::FindDevice(const std::string& iFolder, const std::string& iDevices)
{
    glob_t found = {};
    std::string device;
    if (glob((iFolder + "/event[0-9]*").c_str(), 0, nullptr, &found) == 0) {
        const std::string path = found.gl_pathv[0];
        device = iDevices + path.substr(path.rfind('/'));
    }
    globfree(&found);
    return access(device.c_str(), R_OK) == 0 ? device : "";
}

void VirtualPanelC::Handle(unsigned iType, unsigned iCode, int iValue)
{
    libevdev_uinput_write_event(mDevice, iType, iCode, iValue);
}

bool VirtualPanelC::Create(const ScreenSize& iScreen)
{
    const std::unique_ptr<libevdev, void (*)(libevdev*)> model(libevdev_new(), libevdev_free);
    input_absinfo axis = {};
    libevdev_set_name(model.get(), name);
    libevdev_set_id_bustype(model.get(), BUS_VIRTUAL);
    libevdev_enable_property(model.get(), INPUT_PROP_DIRECT);
    axis.maximum = iScreen.width - 1;
    libevdev_enable_event_code(model.get(), EV_ABS, ABS_X, &axis);
    axis.maximum = iScreen.height - 1;
    libevdev_enable_event_code(model.get(), EV_ABS, ABS_Y, &axis);
    libevdev_enable_event_code(model.get(), EV_KEY, BTN_TOUCH, nullptr);
    libevdev_enable_event_code(model.get(), EV_KEY, TouchTranslatorC::otherButton, nullptr);
    const int error = libevdev_uinput_create_from_device(model.get(), mUinput, &mDevice);
    if (error != 0) {
        Report(LOG_ERR, "%s makes no touch panel (%s): see whether the kernel's input layer is complete", uinputPath,
               std::strerror(-error));
    }
    return error == 0;
}

} // namespace PEBBLETON
