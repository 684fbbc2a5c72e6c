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
    Screen,  // reports touches
};

PanelKind KindOf(const libevdev* iDevice);

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
    std::string GetName() const;
    PanelKind GetKind() const;

    // Whether it is the panel that this program makes, this instance or another.
    bool IsVirtual() const;

    // What it reports at its edges. Both ends are alike where it does not say.
    AxisRange GetRangeX() const;
    AxisRange GetRangeY() const;

    // The fingers on it now.
    ContactsC GetContacts() const;

    // Takes the device away from everyone else. False: somebody else has done that.
    bool Grab();

    // To be polled; readable when something happened.
    int GetDescriptor() const;

    // What Read met.
    enum class State
    {
        Fine, // all that has happened is read
        Lost, // events were lost; GetContacts knows how things are now
        Gone, // the device is not there any more
    };

    // Hands on what has happened, up to a loss if there was one.
    State Read(IEventSink& ioSink);

private:
    PanelC(std::string iPath, int iDescriptor, libevdev* iDevice);
    AxisRange GetRange(unsigned iMultiTouchAxis, unsigned iAxis) const;
    State Resynchronise();

    std::string mPath;
    int mDescriptor;   // owned
    libevdev* mDevice; // owned; uses mDescriptor
};

} // namespace PEBBLETON

#endif
