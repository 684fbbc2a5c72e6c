#ifndef PEBBLETON_TOUCH_PANEL_H
#define PEBBLETON_TOUCH_PANEL_H

#include <memory>
#include <string>

#include "Contacts.h"
#include "IEventSink.h"
#include "ScreenMap.h"

struct libevdev;

namespace PEBBLETON
{

// What an input device is good for as a panel, the better the greater.
enum class PanelKind
{
    None,
    Pad,     // a touch pad, which is not meant as a place on the screen
    Pointer, // reports places, and a button at them
    Pen,     // reports the touches of a pen, often beside a device that reports fingers
    Screen,  // reports touches of fingers
};

PanelKind KindOf(const libevdev* iDevice);

// What the device reports at its edges; both ends are alike where it does not say. It must not be of PanelKind::None.
AxisRange RangeXOf(const libevdev* iDevice);
AxisRange RangeYOf(const libevdev* iDevice);

// How the device tells of fingers, and as what it knows them now.
ContactsC ContactsOf(const libevdev* iDevice);

// An input device of the kernel, open for as long as this object is there.
class PanelC
{
public:
    // Takes nothing from the device yet. Null: it cannot be opened, as errno says, or is no input device.
    static std::unique_ptr<PanelC> Open(const std::string& iPath);
    ~PanelC();
    PanelC(const PanelC&) = delete;
    PanelC& operator=(const PanelC&) = delete;

    const std::string& GetPath() const;

    // With "?" for what would break a line.
    std::string GetName() const;
    PanelKind GetKind() const;

    // Whether it is the panel that this program makes, this instance or another.
    bool IsVirtual() const;

    AxisRange GetRangeX() const;
    AxisRange GetRangeY() const;

    // The fingers on it now.
    ContactsC GetContacts() const;

    // Takes the device away from everyone else. Returns 0 or an errno; EBUSY: somebody else has done that.
    int Grab();

    // To be polled; readable when something happened.
    int GetDescriptor() const;

    // What Read met.
    enum class State
    {
        Fine, // what has happened is handed on
        Lost, // events were lost; GetContacts knows how things are now
        Gone, // the device is not there any more
    };

    // Hands on what has happened, up to a loss if there was one. Of very much it leaves a part for the next time.
    State Read(IEventSink& ioSink);

    // Whether a part was left, of which the descriptor may not tell.
    bool HasMore() const;

private:
    PanelC(std::string iPath, int iDescriptor, libevdev* iDevice);
    State Resynchronise();

    std::string mPath;
    int mDescriptor;   // owned
    libevdev* mDevice; // owned; uses mDescriptor
};

} // namespace PEBBLETON

#endif
