#ifndef PEBBLETON_TOUCH_TOUCH_TRANSLATOR_H
#define PEBBLETON_TOUCH_TOUCH_TRANSLATOR_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include <linux/input-event-codes.h>

#include "Contacts.h"
#include "IEventSink.h"
#include "ScreenMap.h"

namespace PEBBLETON
{

// Turns the events of one panel into those of a panel that the menu reads right.
//
// What comes out is, for each touch: the position `parked`, so that the kernel reports both axes of the touch anew;
// both axes in pixels and BTN_TOUCH 1 in one report; its motion; and BTN_TOUCH 0 in a report of its own, which nothing
// follows. A touch that is cancelled fires nothing: it is parked, then `otherButton` is pressed and released, each in a
// report of its own, and then it is released. The menu counts the time of a long press from the last press of anything.
//
// A report is taken whole before anything is said about it. The first finger is the touch until it lifts. A finger that
// came while it was down, or that was there before this object, never becomes a touch; one that comes in the report in
// which the touch lifts is the next touch, after a moment. A palm is no touch, and a touch that turns out
// to be one is cancelled.
//
// What lies still for `longestRest` may be water: a finger that comes then is the touch, and the one until then is
// cancelled.
class TouchTranslatorC : public IEventSink
{
public:
    // Outside of any screen. Whoever makes the panel that the events come out of parks it there first.
    static constexpr Position parked = {-1, -1};
    static constexpr unsigned otherButton = BTN_RIGHT;
    static constexpr std::chrono::seconds longestRest{30};
    static constexpr int still = 10; // pixels that what lies still may seem to move

    using Time = std::chrono::steady_clock::time_point;

    // iContacts: the panel as it is now. ioSink must outlive this object. iClock: what time it is.
    TouchTranslatorC(IEventSink& ioSink, const ScreenMapC& iMap, ContactsC iContacts,
                     std::function<Time()> iClock = std::chrono::steady_clock::now);

    // Cancels the touch.
    ~TouchTranslatorC() override;
    TouchTranslatorC(const TouchTranslatorC&) = delete;
    TouchTranslatorC& operator=(const TouchTranslatorC&) = delete;

    // Takes the panel's next event. SYN_DROPPED, which says that events were lost, cancels the touch; what the panel is
    // like is unknown then, and whoever knows makes a new translator.
    void Handle(unsigned iType, unsigned iCode, int iValue) override;

    // Cancels the touch, if there is one. The fingers that are down do not become a touch any more.
    void Cancel();

    // Whether a finger waits to become the touch. It does so with the panel's next report, or as PressLate is called.
    bool HasLate() const;
    void PressLate();

    // Where the touch is, while there is one.
    struct Touch {
        Position onPanel; // in the panel's units
        Position pixel;   // on the screen
    };
    std::optional<Touch> GetTouch() const;

    // Where the touch began that came last, unless this was asked since.
    std::optional<Touch> TakePressed();

private:
    void EndReport();
    bool TapLate();
    void Follow();
    void Withdraw();
    std::optional<std::size_t> FindNew() const;
    void Press(std::size_t iContact);
    void NoteMotion();
    bool IsStuck() const;
    void MoveTo(const Position& iPixel);
    void Switch(unsigned iButton, int iValue);
    void Spend();

    IEventSink& mSink;
    ScreenMapC mMap;
    ContactsC mContacts;
    std::function<Time()> mClock;
    bool mIsKnown;                     // whether mSpent holds all that were down
    std::vector<int> mSpent;           // for each contact the id of the finger that is no touch, or below 0
    std::optional<std::size_t> mTouch; // the contact that is the touch
    int mTouchId = -1;                 // and its finger
    std::optional<std::size_t> mLate;  // the contact that came as the touch was lifted
    std::optional<Touch> mPressed;     // for TakePressed
    Position mPixel = parked;          // what was said last
    Position mRest = parked;           // where the touch lies still
    Time mResting;                     // since when
};

} // namespace PEBBLETON

#endif
