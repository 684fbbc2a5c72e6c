#include "Panel.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

#include "VirtualPanel.h"

namespace PEBBLETON
{

namespace
{

// So that a panel gone mad holds up nothing else.
constexpr int mostAtOnce = 1000;

bool has(const libevdev* iDevice, unsigned iType, unsigned iCode)
{
    return libevdev_has_event_code(iDevice, iType, iCode) != 0;
}

// The slots of a semi-multi-touch device are the corners of a box around the fingers. A device that has the axis before
// that of the slots claims every axis there is, and has no fingers.
bool isMultiTouch(const libevdev* iDevice)
{
    return has(iDevice, EV_ABS, ABS_MT_POSITION_X) && has(iDevice, EV_ABS, ABS_MT_POSITION_Y) &&
           !has(iDevice, EV_ABS, ABS_MT_SLOT - 1) && libevdev_has_property(iDevice, INPUT_PROP_SEMI_MT) == 0;
}

AxisRange rangeOf(const libevdev* iDevice, unsigned iMultiTouchAxis, unsigned iAxis)
{
    const input_absinfo* info = libevdev_get_abs_info(iDevice, isMultiTouch(iDevice) ? iMultiTouchAxis : iAxis);
    return {info->minimum, info->maximum};
}

bool isSingleTouch(const libevdev* iDevice, unsigned iButton)
{
    return has(iDevice, EV_ABS, ABS_X) && has(iDevice, EV_ABS, ABS_Y) && has(iDevice, EV_KEY, iButton);
}

// A sensor, a game pad or joystick, or a mouse: its axes are no places on a screen.
bool isNone(const libevdev* iDevice)
{
    return libevdev_has_property(iDevice, INPUT_PROP_ACCELEROMETER) != 0 || has(iDevice, EV_KEY, BTN_SOUTH) ||
           has(iDevice, EV_KEY, BTN_TRIGGER) || (has(iDevice, EV_REL, REL_X) && !isSingleTouch(iDevice, BTN_TOUCH));
}

bool isPen(const libevdev* iDevice)
{
    return has(iDevice, EV_KEY, BTN_TOOL_PEN) && !has(iDevice, EV_KEY, BTN_TOOL_FINGER) && !isMultiTouch(iDevice);
}

Contact contactIn(const libevdev* iDevice, unsigned iSlot)
{
    const auto value = [&](unsigned iCode) { return libevdev_get_slot_value(iDevice, iSlot, iCode); };
    return {value(ABS_MT_TRACKING_ID),
            {value(ABS_MT_POSITION_X), value(ABS_MT_POSITION_Y)},
            value(ABS_MT_DISTANCE),
            value(ABS_MT_TOOL_TYPE)};
}

} // namespace

PanelKind KindOf(const libevdev* iDevice)
{
    if (isNone(iDevice)) {
        return PanelKind::None;
    }
    if (isMultiTouch(iDevice) || isSingleTouch(iDevice, BTN_TOUCH)) {
        return libevdev_has_property(iDevice, INPUT_PROP_POINTER) != 0 ? PanelKind::Pad
               : isPen(iDevice)                                        ? PanelKind::Pen
                                                                       : PanelKind::Screen;
    }
    return isSingleTouch(iDevice, BTN_LEFT) ? PanelKind::Pointer : PanelKind::None;
}

ContactsC ContactsOf(const libevdev* iDevice)
{
    if (!isMultiTouch(iDevice)) {
        const unsigned button = isSingleTouch(iDevice, BTN_TOUCH) ? BTN_TOUCH : BTN_LEFT;
        const Position position = {libevdev_get_event_value(iDevice, EV_ABS, ABS_X),
                                   libevdev_get_event_value(iDevice, EV_ABS, ABS_Y)};
        // One that is pressed now is heard of when it is pressed anew.
        return {Protocol::Single, {{-1, position}}, 0, button};
    }
    const int slots = libevdev_get_num_slots(iDevice);
    if (slots < 1) {
        // Only of one that has this button is it known, if it is not pressed, that no finger is down.
        int pressed = 0;
        const bool known = libevdev_fetch_event_value(iDevice, EV_KEY, BTN_TOUCH, &pressed) != 0 && pressed == 0;
        return {Protocol::Anonymous, {}, 0, 0, known};
    }
    std::vector<Contact> contacts(static_cast<std::size_t>(slots));
    for (unsigned slot = 0; slot < contacts.size(); ++slot) {
        contacts[slot] = contactIn(iDevice, slot);
    }
    return {Protocol::Slots, std::move(contacts), libevdev_get_current_slot(iDevice)};
}

AxisRange RangeXOf(const libevdev* iDevice)
{
    return rangeOf(iDevice, ABS_MT_POSITION_X, ABS_X);
}

AxisRange RangeYOf(const libevdev* iDevice)
{
    return rangeOf(iDevice, ABS_MT_POSITION_Y, ABS_Y);
}

std::unique_ptr<PanelC> PanelC::Open(const std::string& iPath)
{
    const int descriptor = open(iPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return nullptr;
    }
    libevdev* device = nullptr;
    const int error = libevdev_new_from_fd(descriptor, &device);
    if (error != 0) {
        close(descriptor);
        errno = -error;
        return nullptr;
    }
    return std::unique_ptr<PanelC>(new PanelC(iPath, descriptor, device));
}

PanelC::PanelC(std::string iPath, int iDescriptor, libevdev* iDevice)
    : mPath(std::move(iPath)), mDescriptor(iDescriptor), mDevice(iDevice)
{
}

PanelC::~PanelC()
{
    libevdev_free(mDevice);
    close(mDescriptor);
}

const std::string& PanelC::GetPath() const
{
    return mPath;
}

std::string PanelC::GetName() const
{
    std::string name = libevdev_get_name(mDevice);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char iByte) { return std::iscntrl(iByte) != 0; }, '?');
    return name;
}

PanelKind PanelC::GetKind() const
{
    return KindOf(mDevice);
}

bool PanelC::IsVirtual() const
{
    return GetName() == VirtualPanelC::name;
}

AxisRange PanelC::GetRangeX() const
{
    return RangeXOf(mDevice);
}

AxisRange PanelC::GetRangeY() const
{
    return RangeYOf(mDevice);
}

ContactsC PanelC::GetContacts() const
{
    return ContactsOf(mDevice);
}

int PanelC::Grab()
{
    return -libevdev_grab(mDevice, LIBEVDEV_GRAB);
}

int PanelC::GetDescriptor() const
{
    return mDescriptor;
}

PanelC::State PanelC::Read(IEventSink& ioSink)
{
    for (int events = 0; events < mostAtOnce; ++events) {
        input_event event = {};
        const int status = libevdev_next_event(mDevice, LIBEVDEV_READ_FLAG_NORMAL, &event);
        if (status == LIBEVDEV_READ_STATUS_SUCCESS) {
            ioSink.Handle(event.type, event.code, event.value);
        } else if (status == LIBEVDEV_READ_STATUS_SYNC) {
            return Resynchronise();
        } else {
            return status == -EAGAIN || status == -EINTR ? State::Fine : State::Gone;
        }
    }
    return State::Fine;
}

bool PanelC::HasMore() const
{
    return libevdev_has_event_pending(mDevice) > 0;
}

// The library learns how things are now; it says so in events, which nobody needs.
PanelC::State PanelC::Resynchronise()
{
    int status = LIBEVDEV_READ_STATUS_SYNC;
    while (status == LIBEVDEV_READ_STATUS_SYNC) {
        input_event event = {};
        status = libevdev_next_event(mDevice, LIBEVDEV_READ_FLAG_SYNC, &event);
    }
    return status == -EAGAIN ? State::Lost : State::Gone;
}

} // namespace PEBBLETON
