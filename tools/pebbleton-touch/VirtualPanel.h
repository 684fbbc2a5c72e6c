#ifndef PEBBLETON_TOUCH_VIRTUAL_PANEL_H
#define PEBBLETON_TOUCH_VIRTUAL_PANEL_H

#include <string>

#include "IEventSink.h"
#include "ScreenMap.h"

struct libevdev_uinput;

namespace PEBBLETON
{

// The panel that the kernel shows to the command: the axes ABS_X and ABS_Y in pixels, BTN_TOUCH, and a second button
// for touches that are cancelled. It is there from Open to the end of this object, whatever becomes of the real one.
class VirtualPanelC : public IEventSink
{
public:
    static constexpr const char* name = "Pebbleton touch panel";

    VirtualPanelC() = default;
    ~VirtualPanelC() override;
    VirtualPanelC(const VirtualPanelC&) = delete;
    VirtualPanelC& operator=(const VirtualPanelC&) = delete;

    // Makes the panel, its position parked outside of the screen. False: it cannot be made, which is reported.
    bool Open(const ScreenSize& iScreen);

    // The path of the panel's device; empty: it is not there, or may not be read; not before Open. It may come later,
    // with the module evdev, or from a daemon that makes /dev/input.
    std::string FindDevice() const;

    // The same of the input device whose folder below /sys this is, in the folder iDevices.
    static std::string FindDevice(const std::string& iFolder, const std::string& iDevices);

    // Reports the event as one of this panel; not before Open.
    void Handle(unsigned iType, unsigned iCode, int iValue) override;

private:
    bool Create(const ScreenSize& iScreen);

    int mUinput = -1;                   // owned
    libevdev_uinput* mDevice = nullptr; // owned; uses mUinput
};

} // namespace PEBBLETON

#endif
