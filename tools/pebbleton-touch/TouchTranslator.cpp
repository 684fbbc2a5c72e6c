#include "TouchTranslator.h"

#include <cstdlib>
#include <utility>

namespace PEBBLETON
{

TouchTranslatorC::TouchTranslatorC(IEventSink& ioSink, const ScreenMapC& iMap, ContactsC iContacts,
                                   std::function<Time()> iClock)
    : mSink(ioSink)
    , mMap(iMap)
    , mContacts(std::move(iContacts))
    , mClock(std::move(iClock))
    , mIsKnown(mContacts.IsKnown())
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
    Withdraw();
    Spend();
    mLate.reset();
}

bool TouchTranslatorC::HasLate() const
{
    return mLate.has_value();
}

void TouchTranslatorC::PressLate()
{
    if (mLate) {
        Press(*mLate);
        Spend();
        mLate.reset();
    }
}

std::optional<TouchTranslatorC::Touch> TouchTranslatorC::GetTouch() const
{
    if (!mTouch) {
        return std::nullopt;
    }
    return Touch{mContacts.Get()[*mTouch].position, mPixel};
}

std::optional<TouchTranslatorC::Touch> TouchTranslatorC::TakePressed()
{
    return std::exchange(mPressed, std::nullopt);
}

void TouchTranslatorC::EndReport()
{
    if (!mIsKnown) {
        mIsKnown = mContacts.IsKnown();
        Spend();
        return;
    }
    const bool wasTouched = mTouch.has_value() || TapLate();
    if (mTouch) {
        Follow();
    }
    // Nothing follows a release at once: it may have fired a button, and DirectFB may crash when input comes while it
    // closes.
    const bool waits = wasTouched && !mTouch;
    const std::optional<std::size_t> next = FindNew();
    if (next && IsStuck()) {
        Withdraw();
    }
    if (next && !mTouch && !waits) {
        Press(*next);
    }
    Spend();
    mLate = waits ? next : std::nullopt;
    if (mLate) {
        mSpent[*mLate] = -1;
    }
}

// The finger that came with the last release, if it has been lifted since.
bool TouchTranslatorC::TapLate()
{
    const bool isTapped = mLate && mContacts.Get()[*mLate].id < 0;
    if (isTapped) {
        Press(*mLate);
        Switch(BTN_TOUCH, 0);
        mTouch.reset();
    }
    return isTapped;
}

// The last motion counts also when it comes with the lift: a finger that slid off must not fire. But some panels lift
// at 0,0 wherever the finger was.
void TouchTranslatorC::Follow()
{
    const Contact& contact = mContacts.Get()[*mTouch];
    const bool isNowhere = contact.id < 0 && contact.position.x == 0 && contact.position.y == 0;
    if ((contact.id == mTouchId || contact.id < 0) && contact.tool == MT_TOOL_PALM) {
        Withdraw();
        return;
    }
    if ((contact.id == mTouchId || contact.id < 0) && !isNowhere) {
        MoveTo(mMap.ToPixel(contact.position));
        NoteMotion();
    }
    if (contact.id != mTouchId || !contact.IsDown()) {
        Switch(BTN_TOUCH, 0);
        mTouch.reset();
    }
}

// Ends the touch so that nothing fires.
void TouchTranslatorC::Withdraw()
{
    if (mTouch) {
        MoveTo(parked);
        Switch(otherButton, 1);
        Switch(otherButton, 0);
        Switch(BTN_TOUCH, 0);
        mTouch.reset();
    }
}

// The first finger that was not down, or not there, before this report.
std::optional<std::size_t> TouchTranslatorC::FindNew() const
{
    const std::vector<Contact>& contacts = mContacts.Get();
    for (std::size_t i = 0; i < contacts.size(); ++i) {
        if (contacts[i].IsDown() && (i >= mSpent.size() || contacts[i].id != mSpent[i])) {
            return i;
        }
    }
    return std::nullopt;
}

void TouchTranslatorC::Press(std::size_t iContact)
{
    const Contact& contact = mContacts.Get()[iContact];
    mTouch = iContact;
    mTouchId = contact.id;
    mPressed = {contact.position, mMap.ToPixel(contact.position)};
    // Only now, not after the release before: DirectFB may crash when input comes while it closes, as it does when that
    // release has fired a button.
    mPixel = {};
    MoveTo(parked);
    mPixel = mMap.ToPixel(contact.position);
    mSink.Handle(EV_ABS, ABS_X, mPixel.x);
    mSink.Handle(EV_ABS, ABS_Y, mPixel.y);
    mSink.Handle(EV_KEY, BTN_TOUCH, 1);
    mSink.Handle(EV_SYN, SYN_REPORT, 0);
    mRest = parked; // so that the time of its rest begins now
    NoteMotion();
}

void TouchTranslatorC::NoteMotion()
{
    if (std::abs(mPixel.x - mRest.x) > still || std::abs(mPixel.y - mRest.y) > still || mRest.x < 0) {
        mRest = mPixel;
        mResting = mClock();
    }
}

bool TouchTranslatorC::IsStuck() const
{
    return mTouch && mClock() - mResting >= longestRest;
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
        mSpent[i] = contacts[i].distance == 0 ? contacts[i].id : -1;
    }
}

} // namespace PEBBLETON
