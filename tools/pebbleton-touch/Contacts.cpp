#include "Contacts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace PEBBLETON
{

namespace
{

// More than this no hand has; it bounds the work for a panel gone mad.
constexpr std::size_t mostFingers = 32;

// The square of the distance, which is as good to compare by. In floating point, since positions take up all 32 bits.
double distanceBetween(const Position& iOne, const Position& iOther)
{
    const double x = static_cast<double>(iOne.x) - iOther.x;
    const double y = static_cast<double>(iOne.y) - iOther.y;
    return x * x + y * y;
}

// A finger that was there, and a place where one is now.
struct Pair {
    double distance;
    std::size_t contact;
    std::size_t finger;
};

// Every pair there may be, the nearest first. Fingers that the panel numbers differently are not the same.
std::vector<Pair> pairUp(const std::vector<Contact>& iContacts, const std::vector<Contact>& iFingers)
{
    std::vector<Pair> pairs;
    for (std::size_t contact = 0; contact < iContacts.size(); ++contact) {
        for (std::size_t finger = 0; finger < iFingers.size(); ++finger) {
            if (iContacts[contact].id == iFingers[finger].id) {
                pairs.push_back(
                    {distanceBetween(iContacts[contact].position, iFingers[finger].position), contact, finger});
            }
        }
    }
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const Pair& iOne, const Pair& iOther) { return iOne.distance < iOther.distance; });
    return pairs;
}

} // namespace

ContactsC::ContactsC(Protocol iProtocol, std::vector<Contact> iContacts, int iSlot, unsigned iButton, bool iIsKnown)
    : mProtocol(iProtocol), mContacts(std::move(iContacts)), mSlot(iSlot), mButton(iButton), mIsKnown(iIsKnown)
{
}

const std::vector<Contact>& ContactsC::Get() const
{
    return mContacts;
}

bool ContactsC::IsKnown() const
{
    return mIsKnown;
}

bool ContactsC::Handle(unsigned iType, unsigned iCode, int iValue)
{
    switch (mProtocol) {
    case Protocol::Single:
        HandleSingle(iType, iCode, iValue);
        break;
    case Protocol::Slots:
        HandleSlots(iType, iCode, iValue);
        break;
    case Protocol::Anonymous:
        HandleAnonymous(iType, iCode, iValue);
        break;
    }
    return iType == EV_SYN && iCode == SYN_REPORT;
}

void ContactsC::HandleSingle(unsigned iType, unsigned iCode, int iValue)
{
    Contact& contact = mContacts.front();
    if (iType == EV_KEY && iCode == mButton) {
        contact.id = iValue != 0 ? 0 : -1;
    } else if (iType == EV_ABS && iCode == ABS_X) {
        contact.position.x = iValue;
    } else if (iType == EV_ABS && iCode == ABS_Y) {
        contact.position.y = iValue;
    }
}

void ContactsC::HandleSlots(unsigned iType, unsigned iCode, int iValue)
{
    if (iType != EV_ABS) {
        return;
    }
    if (iCode == ABS_MT_SLOT) {
        mSlot = iValue;
    }
    if (static_cast<std::size_t>(mSlot) >= mContacts.size()) {
        return;
    }
    Contact& contact = mContacts[static_cast<std::size_t>(mSlot)];
    switch (iCode) {
    case ABS_MT_TRACKING_ID:
        contact.id = iValue;
        break;
    case ABS_MT_POSITION_X:
        contact.position.x = iValue;
        break;
    case ABS_MT_POSITION_Y:
        contact.position.y = iValue;
        break;
    case ABS_MT_DISTANCE:
        contact.distance = iValue;
        break;
    case ABS_MT_TOOL_TYPE:
        contact.tool = iValue;
        break;
    default:
        break;
    }
}

void ContactsC::HandleAnonymous(unsigned iType, unsigned iCode, int iValue)
{
    if (iType == EV_ABS && iCode == ABS_MT_POSITION_X) {
        mFinger.id = 0;
        mFinger.position.x = iValue;
    } else if (iType == EV_ABS && iCode == ABS_MT_POSITION_Y) {
        mFinger.id = 0;
        mFinger.position.y = iValue;
    } else if (iType == EV_ABS && (iCode == ABS_MT_TOUCH_MAJOR || iCode == ABS_MT_PRESSURE)) {
        mFinger.distance |= iValue == 0 ? 1 : 0; // how some drivers tell of one that has just been lifted
    } else if (iType == EV_ABS && iCode == ABS_MT_TOOL_TYPE) {
        mFinger.tool = iValue;
    } else if (iType == EV_ABS && iCode == ABS_MT_TRACKING_ID) {
        mNumber = iValue;
    } else if (iType == EV_KEY && iCode == BTN_TOUCH) {
        mToldOfFingers = true;
    } else if (iType == EV_SYN && iCode == SYN_MT_REPORT) {
        EndFinger();
    } else if (iType == EV_SYN && iCode == SYN_REPORT) {
        EndAnonymousReport();
    }
}

void ContactsC::EndFinger()
{
    mToldOfFingers = true;
    if ((mFinger.IsDown() || mFinger.IsPalm()) && mFingers.size() < mostFingers) {
        mFinger.id = std::max(mNumber, 0);
        mFingers.push_back(mFinger);
    }
    mFinger = {};
    mNumber = -1;
}

// Where the panel does not number the fingers, each stays nearest to itself from one report to the next.
void ContactsC::EndAnonymousReport()
{
    if (!mToldOfFingers) {
        return;
    }
    std::vector<bool> stays(mContacts.size());
    std::vector<bool> known(mFingers.size());
    for (const Pair& pair : pairUp(mContacts, mFingers)) {
        if (!stays[pair.contact] && !known[pair.finger]) {
            stays[pair.contact] = known[pair.finger] = true;
            mContacts[pair.contact] = mFingers[pair.finger];
        }
    }
    for (std::size_t contact = 0; contact < stays.size(); ++contact) {
        mContacts[contact].id = stays[contact] ? mContacts[contact].id : -1;
    }
    for (std::size_t finger = 0; finger < known.size(); ++finger) {
        if (!known[finger]) {
            Add(mFingers[finger]);
        }
    }
    mFingers.clear();
    mToldOfFingers = false;
    mIsKnown = true;
}

void ContactsC::Add(const Contact& iFinger)
{
    const auto isFree = [](const Contact& iContact) { return iContact.id < 0; };
    auto place = std::find_if(mContacts.begin(), mContacts.end(), isFree);
    if (place == mContacts.end()) {
        place = mContacts.emplace(place);
    }
    *place = iFinger;
}

} // namespace PEBBLETON
