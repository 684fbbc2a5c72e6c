// Feeds any stream of events to the translator, for a panel of any protocol, and holds what comes out to what is
// promised of it for any stream.

#include <cstdlib>
#include <iostream>

#include <fuzzer/FuzzedDataProvider.h>
#include <linux/input-event-codes.h>

#include "TouchTranslator.h"

namespace
{

using namespace PEBBLETON;

constexpr ScreenSize screen = {800, 480};

void demand(bool iHolds, const char* iWhat)
{
    if (!iHolds) {
        std::cerr << "It does not hold: " << iWhat << '\n';
        std::abort();
    }
}

// The virtual panel as a reader of it sees it, report by report.
class Reader : public IEventSink
{
public:
    void Handle(unsigned iType, unsigned iCode, int iValue) override
    {
        if (iType == EV_SYN) {
            demand(iCode == SYN_REPORT && (mX || mY || mButton || mOther), "a report says something");
            EndReport();
        } else if (iType == EV_KEY && iCode == TouchTranslatorC::otherButton) {
            demand(mPressed && !mX && !mY && iValue == (mOtherPressed ? 0 : 1),
                   "the other button has reports of its own");
            mOther = mRenewed = true;
            mOtherPressed = !mOtherPressed;
        } else if (iType == EV_KEY) {
            demand(iCode == BTN_TOUCH && iValue == (mPressed ? 0 : 1), "presses and releases come in turn");
            mButton = true;
        } else {
            demand(iType == EV_ABS && iCode <= ABS_Y, "there is nothing else");
            (iCode == ABS_X ? mX : mY) = true;
            (iCode == ABS_X ? mPosition.x : mPosition.y) = iValue;
        }
    }

    // The touch until now must not fire any more.
    void Lose()
    {
        mLost = mPressed;
    }

    bool IsPressed() const
    {
        return mPressed;
    }

private:
    void EndReport()
    {
        const bool parked = mPosition.x == -1 && mPosition.y == -1;
        const bool inside =
            mPosition.x >= 0 && mPosition.x < screen.width && mPosition.y >= 0 && mPosition.y < screen.height;
        demand(parked || inside, "a position is on the screen or parked");
        if (mButton && !mPressed) {
            demand(mX && mY && inside && mWasParked, "a press has both axes, anew, in the same report");
        } else if (mButton) {
            demand(!mX && !mY, "a release has a report of its own");
            demand(!mLost || (parked && mRenewed), "a touch that was lost fires nothing");
            demand(!mOtherPressed, "the other button does not stay pressed");
            mLost = mRenewed = false;
        }
        demand(!mOther || parked, "the other button is pressed off the screen");
        demand(mPressed || mButton || parked, "no position is on the screen without a touch");
        mWasParked = parked;
        mPressed = mPressed != mButton;
        mX = mY = mButton = mOther = false;
    }

    bool mX = false, mY = false, mButton = false, mOther = false; // what the report has so far
    bool mOtherPressed = false;
    bool mRenewed = false; // the other button was pressed in this touch
    bool mPressed = false;
    bool mLost = false;
    bool mWasParked = false; // by the report before
    Position mPosition = TouchTranslatorC::parked;
};

ContactsC makeContacts(FuzzedDataProvider& ioData)
{
    const auto protocol = ioData.PickValueInArray({Protocol::Single, Protocol::Slots, Protocol::Anonymous});
    std::vector<Contact> contacts(protocol == Protocol::Single ? 1 : protocol == Protocol::Slots ? 3 : 0);
    for (Contact& contact : contacts) {
        contact = {ioData.ConsumeIntegralInRange(-1, 1),
                   {ioData.ConsumeIntegral<int>(), 5},
                   ioData.ConsumeIntegralInRange(0, 1),
                   ioData.ConsumeIntegralInRange(0, 2)};
    }
    return {protocol, contacts, ioData.ConsumeIntegralInRange(-1, 3), BTN_TOUCH, ioData.ConsumeBool()};
}

ScreenMapC makeMap(FuzzedDataProvider& ioData)
{
    const AxisRange x = {ioData.ConsumeIntegral<int>(), ioData.ConsumeIntegral<int>()};
    return {screen, x, {0, 255}, {ioData.ConsumeBool(), ioData.ConsumeBool(), ioData.ConsumeBool()}};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize)
{
    constexpr std::pair<unsigned, unsigned> kinds[] = {{EV_SYN, SYN_REPORT},
                                                       {EV_SYN, SYN_REPORT},
                                                       {EV_SYN, SYN_MT_REPORT},
                                                       {EV_SYN, SYN_DROPPED},
                                                       {EV_KEY, BTN_TOUCH},
                                                       {EV_KEY, KEY_HOME},
                                                       {EV_ABS, ABS_X},
                                                       {EV_ABS, ABS_Y},
                                                       {EV_ABS, ABS_MT_SLOT},
                                                       {EV_ABS, ABS_MT_TRACKING_ID},
                                                       {EV_ABS, ABS_MT_POSITION_X},
                                                       {EV_ABS, ABS_MT_POSITION_Y},
                                                       {EV_ABS, ABS_MT_DISTANCE},
                                                       {EV_ABS, ABS_MT_PRESSURE},
                                                       {EV_ABS, ABS_MT_TOOL_TYPE}};
    FuzzedDataProvider data(iData, iSize);
    Reader reader;
    {
        const ScreenMapC map = makeMap(data);
        TouchTranslatorC::Time now;
        TouchTranslatorC translator(reader, map, makeContacts(data), [&] { return now; });
        while (data.remaining_bytes() != 0) {
            const auto [type, code] = data.PickValueInArray(kinds);
            const int value = data.ConsumeBool() ? data.ConsumeIntegral<int>() : data.ConsumeIntegralInRange(-1, 4);
            if (code == SYN_DROPPED && type == EV_SYN) {
                reader.Lose();
            }
            now += std::chrono::seconds(data.ConsumeIntegralInRange(0, 9));
            translator.Handle(type, code, value);
            demand(translator.GetTouch().has_value() == reader.IsPressed(), "a touch is what is pressed");
        }
        reader.Lose();
    }
    demand(!reader.IsPressed(), "nothing stays pressed");
    return 0;
}
