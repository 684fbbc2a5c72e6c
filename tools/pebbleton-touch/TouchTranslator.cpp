#include "TouchTranslator.h"

#include <utility>

namespace PEBBLETON
{

TouchTranslatorC::TouchTranslatorC(IEventSink& ioSink, const ScreenMapC& iMap, ContactsC iContacts)
    : mSink(ioSink), mMap(iMap), mContacts(std::move(iContacts))
{
    Spend();
}

TouchTranslatorC::~TouchTranslatorC()
{
    Cancel();
}

void TouchTranslatorC::Handle(unsigned iType, unsigned iCode, int iValue)
{
    if (iType == EV_SYN && iCode == SYN_DROPPED) {
        Cancel();
    } else if (mContacts.Handle(iType, iCode, iValue)) {
        EndReport();
    }
}

void TouchTranslatorC::Cancel()
{
    if (mTouch) {
        MoveTo(parked);
        Switch(otherButton, 1);
        Switch(otherButton, 0);
        Switch(BTN_TOUCH, 0);
        mTouch.reset();
    }
    Spend();
}

std::optional<TouchTranslatorC::Touch> TouchTranslatorC::GetTouch() const
{
    if (!mTouch) {
        return std::nullopt;
    }
    return Touch{mContacts.Get()[*mTouch].position, mPixel};
}

void TouchTranslatorC::EndReport()
{
    if (mTouch) {
        Follow();
        Spend();
        return;
    }
    const std::vector<Contact>& contacts = mContacts.Get();
    mSpent.resize(contacts.size(), -1);
    for (std::size_t i = 0; i < contacts.size(); ++i) {
        if (!contacts[i].IsDown()) {
            mSpent[i] = -1;
        } else if (!mTouch && contacts[i].id != mSpent[i]) {
            Press(i);
        }
    }
}

// The last motion counts also when it comes with the lift: a finger that slid off must not fire.
void TouchTranslatorC::Follow()
{
    const Contact& contact = mContacts.Get()[*mTouch];
    if (contact.id == mTouchId || contact.id < 0) {
        MoveTo(mMap.ToPixel(contact.position));
    }
    if (contact.id != mTouchId || !contact.IsDown()) {
        Switch(BTN_TOUCH, 0);
        mTouch.reset();
    }
}

void TouchTranslatorC::Press(std::size_t iContact)
{
    const Contact& contact = mContacts.Get()[iContact];
    mTouch = iContact;
    mTouchId = contact.id;
    // Only now, not after the release before: DirectFB may crash when input comes while it closes, as it does when that
    // release has fired a button.
    mPixel = {};
    MoveTo(parked);
    mPixel = mMap.ToPixel(contact.position);
    mSink.Handle(EV_ABS, ABS_X, mPixel.x);
    mSink.Handle(EV_ABS, ABS_Y, mPixel.y);
    mSink.Handle(EV_KEY, BTN_TOUCH, 1);
    mSink.Handle(EV_SYN, SYN_REPORT, 0);
}

void TouchTranslatorC::MoveTo(const Position& iPixel)
{
    if (iPixel.x == mPixel.x && iPixel.y == mPixel.y) {
        return;
    }
    mPixel = iPixel;
    mSink.Handle(EV_ABS, ABS_X, mPixel.x);
    mSink.Handle(EV_ABS, ABS_Y, mPixel.y);
    mSink.Handle(EV_SYN, SYN_REPORT, 0);
}

void TouchTranslatorC::Switch(unsigned iButton, int iValue)
{
    mSink.Handle(EV_KEY, iButton, iValue);
    mSink.Handle(EV_SYN, SYN_REPORT, 0);
}

void TouchTranslatorC::Spend()
{
    const std::vector<Contact>& contacts = mContacts.Get();
    mSpent.resize(contacts.size());
    for (std::size_t i = 0; i < contacts.size(); ++i) {
        mSpent[i] = contacts[i].IsDown() ? contacts[i].id : -1;
    }
}

} // namespace PEBBLETON
