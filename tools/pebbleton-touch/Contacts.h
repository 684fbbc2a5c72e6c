#ifndef PEBBLETON_TOUCH_CONTACTS_H
#define PEBBLETON_TOUCH_CONTACTS_H

#include <vector>

#include <linux/input.h>

#include "ScreenMap.h"

namespace PEBBLETON
{

// A finger, or the place in the list where one was. The position then stays, since of the next finger the kernel
// reports only what differs from it.
struct Contact {
    int id = -1;            // another one when another finger takes the place; below 0: there is none
    Position position = {}; // in the panel's units
    int distance = 0;       // from the panel's surface; above 0 the finger hovers
    int tool = 0;           // MT_TOOL_PALM: what the panel takes for a palm

    bool IsPalm() const
    {
        return id >= 0 && tool == MT_TOOL_PALM;
    }

    bool IsDown() const
    {
        return id >= 0 && distance == 0 && tool != MT_TOOL_PALM;
    }
};

// In which way a panel tells of fingers.
enum class Protocol
{
    Single,    // one finger, by a button and two axes
    Slots,     // several, each in a slot of its own and told of when something changes
    Anonymous, // several, each report telling of all of them in any order
};

// The fingers on a panel, put together from its events, whichever way it tells of them.
//
// What makes no sense, such as an event about a slot that there is not, changes nothing.
class ContactsC
{
public:
    // As the panel stands now. iContacts: one for Single, one a slot for Slots, none for Anonymous. iSlot: the slot
    // that the next events are about. iButton: what a finger presses, for Single. iIsKnown: whether these are all,
    // which nobody may be able to say of an Anonymous panel.
    ContactsC(Protocol iProtocol, std::vector<Contact> iContacts, int iSlot = 0, unsigned iButton = 0,
              bool iIsKnown = true);

    // Takes the next event. True: it ends a report, so that Get tells how things are.
    bool Handle(unsigned iType, unsigned iCode, int iValue);

    // A finger keeps its place in this list for as long as it is there. The list may grow.
    const std::vector<Contact>& Get() const;

    // Whether Get tells of every finger: from the first report on that tells of fingers, if not from the start.
    bool IsKnown() const;

private:
    void HandleSingle(unsigned iType, unsigned iCode, int iValue);
    void HandleSlots(unsigned iType, unsigned iCode, int iValue);
    void HandleAnonymous(unsigned iType, unsigned iCode, int iValue);
    void EndFinger();
    void EndAnonymousReport();
    void Add(const Contact& iFinger);

    Protocol mProtocol;
    std::vector<Contact> mContacts;
    int mSlot;
    unsigned mButton;
    bool mIsKnown;

    // Of an Anonymous report so far:
    Contact mFinger;               // the finger being told of; the id says whether it has a position yet
    int mNumber = -1;              // that the panel gives it, or below 0
    std::vector<Contact> mFingers; // those told of, with the panel's number for an id, or 0
    bool mToldOfFingers = false;   // a report on something else leaves the fingers as they are
};

} // namespace PEBBLETON

#endif
