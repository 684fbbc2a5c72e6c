#include "Adapter.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

#include <libevdev/libevdev.h>
#include <poll.h>

#include "DisplayFinder.h"
#include "DrmCard.h"
#include "Log.h"
#include "Report.h"
#include "TouchPrinter.h"

namespace PEBBLETON
{

namespace
{

// Milliseconds after which a finger that came with a lift is the touch, though it does not move: long enough for the
// menu to close, had the lift fired, and short beside a long press.
constexpr int lateTime = 200;

} // namespace

AdapterC::AdapterC(const TouchOptions& iOptions)
    : mOptions(iOptions), mWait(mCommand), mWatch(iOptions.device, mComplaints)
{
}

int AdapterC::Run()
{
    if (!Prepare() || !mCommand.Start(mOptions.command)) {
        return mCommand.GetStatus().value_or(failed);
    }
    while (!mCommand.GetStatus()) {
        Wait();
    }
    return *mCommand.GetStatus();
}

bool AdapterC::Prepare()
{
    // What the library thinks of a device would go to the command's standard error.
    libevdev_set_log_function(nullptr, nullptr);
    if (mCommand.GetDescriptor() < 0 || mWatch.GetDescriptor() < 0) {
        Report(LOG_ERR,
               "signals or devices cannot be watched (%s): see whether file descriptors are used up, or those of "
               "inotify, fs.inotify.max_user_instances",
               std::strerror(errno));
        return false;
    }
    if (!FindScreen() || !mVirtual.Open(mScreen) || !AwaitDevice() || !AwaitCard()) {
        return false;
    }
    NameDevice();
    LookForPanel();
    if (mPanel == nullptr) {
        Report(LOG_NOTICE, "there is no touch panel yet; it is used as soon as it comes");
    }
    return true;
}

bool AdapterC::FindScreen()
{
    if (mOptions.screen) {
        mScreen = *mOptions.screen;
    } else if (!FindDisplay()) {
        return false;
    }
    NameCard();
    return true;
}

bool AdapterC::FindDisplay()
{
    using namespace std::chrono_literals;
    DisplayFinderC finder;
    const auto look = [&finder] { return finder.Look(); };
    const StartWaitC::Result result = mWait.For(look, mOptions.wait, "a display");
    if (result == StartWaitC::Result::Missing) {
        Report(LOG_ERR,
               "neither /dev/fb0 nor a connected display tells the screen's size (%s): load the display's driver, or "
               "give the size, as in --screen 800x480",
               std::strerror(finder.GetError()));
    }
    // A driver makes its frame buffer, which the command may need, a moment after it has told of its displays.
    const auto lookOn = [&finder] { return finder.Look() && finder.IsFinal(); };
    if (result != StartWaitC::Result::There || mWait.For(lookOn, 2s) == StartWaitC::Result::Stopped) {
        return false;
    }
    mScreen = finder.Get().size;
    mCard = finder.Get().card;
    return true;
}

// Left to itself the command may take a card that has no display. What the environment says is meant.
void AdapterC::NameCard()
{
    const char* const variable = "DRICARD";
    const char* const named = std::getenv(variable);
    if (named != nullptr && *named != '\0') {
        mCard = named;
    } else if (!mCard.empty()) {
        setenv(variable, mCard.c_str(), 1);
    }
}

// The command looks for panels once, as it starts.
bool AdapterC::AwaitDevice() const
{
    using namespace std::chrono_literals;
    const StartWaitC::Result result = mWait.For([this] { return !mVirtual.FindDevice().empty(); }, 30s,
                                                "the device of its own panel, by the module evdev");
    if (result == StartWaitC::Result::Missing) {
        Report(LOG_ERR,
               "the device of the panel \"%s\" is not there: load the kernel's module evdev, or see what makes "
               "/dev/input",
               VirtualPanelC::name);
    }
    return result == StartWaitC::Result::There;
}

// Left to itself DirectFB opens the first 16 devices, or 32, and takes what any of them reports for touches in pixels.
void AdapterC::NameDevice() const
{
    if (mOptions.otherDevices) {
        return;
    }
    const char* const variable = "DFBARGS";
    const char* const named = std::getenv(variable);
    std::string settings = named != nullptr ? named : "";
    if (!settings.empty() && settings.back() != ',') {
        settings += ',';
    }
    setenv(variable, (settings + "linux-input-devices=" + mVirtual.FindDevice()).c_str(), 1);
}

// What the command shows could not be seen, and would be touched blindly.
bool AdapterC::AwaitCard() const
{
    using namespace std::chrono_literals;
    const DrmCardC card(mCard);
    const StartWaitC::Result result = mWait.For([&card] { return !card.IsTaken(); }, 10s);
    if (result == StartWaitC::Result::Missing) {
        Report(LOG_WARNING, "another program holds the display, %s; the command starts, and may stay unseen",
               mCard.c_str());
    }
    return result != StartWaitC::Result::Stopped;
}

void AdapterC::Wait()
{
    pollfd sources[] = {{mCommand.GetDescriptor(), POLLIN, 0},
                        {mWatch.GetDescriptor(), POLLIN, 0},
                        {mPanel != nullptr ? mPanel->GetDescriptor() : -1, POLLIN, 0}};
    const bool isPending = mPanel != nullptr && mPanel->HasMore();
    const bool hasLate = mTranslator != nullptr && mTranslator->HasLate();
    const int retry = mWatch.GetRetryTime();
    const int ready = poll(sources, std::size(sources), isPending ? 0 : hasLate ? lateTime : retry);
    if (ready < 0) {
        return; // this process was stopped and goes on
    }
    if (ready == 0 && hasLate && !isPending) {
        mTranslator->PressLate();
    }
    // First, since a touch that is to be forgotten may have ended since.
    if (sources[0].revents != 0) {
        TakeSignals();
    }
    if (sources[2].revents != 0 || isPending) {
        ReadPanel();
    }
    if (sources[1].revents != 0 || retry >= 0) {
        mWatch.Drain();
        LookForPanel();
    }
}

// The touch goes first, so that it cannot fire a push button on the way out.
void AdapterC::TakeSignals()
{
    while (const std::optional<int> signal = mCommand.TakeSignal()) {
        if (mTranslator != nullptr) {
            mTranslator->Cancel();
        }
        if (*signal != CommandC::forget) {
            mCommand.HandOn(*signal);
        }
    }
}

void AdapterC::ReadPanel()
{
    TouchPrinterC printer(*mTranslator);
    IEventSink* const sink = mOptions.print ? static_cast<IEventSink*>(&printer) : mTranslator.get();
    switch (mPanel->Read(*sink)) {
    case PanelC::State::Fine:
        break;
    case PanelC::State::Lost:
        Tell("has lost events; a touch is cancelled");
        Translate();
        break;
    case PanelC::State::Gone:
        Tell("is gone");
        LosePanel();
        LookForPanel();
        break;
    }
}

void AdapterC::LookForPanel()
{
    auto panel = mWatch.Find(mPanel != nullptr ? mPanel->GetKind() : PanelKind::None);
    if (panel == nullptr) {
        return;
    }
    if (mPanel != nullptr) {
        Tell("gives way to a touch screen");
        mTranslator.reset();
        mSetAside = std::move(mPanel);
    }
    mPanel = std::move(panel);
    Tell("is used");
    mMap = MakeMap();
    Translate();
}

void AdapterC::LosePanel()
{
    mTranslator.reset();
    mPanel.reset();
    mSetAside.reset(); // to be found again
}

void AdapterC::Translate()
{
    mTranslator.reset(); // which cancels its touch before anything else is said
    mTranslator = std::make_unique<TouchTranslatorC>(mVirtual, *mMap, mPanel->GetContacts());
}

// What the panel says of an axis; of one of which it says nothing, that it counts pixels.
AxisRange AdapterC::KnownRange(const char* iAxis, const AxisRange& iRange, int iPixels)
{
    if (iRange.first != iRange.last) {
        return iRange;
    }
    mComplaints.Say(mPanel->GetPath() + ", \"" + mPanel->GetName() + "\", does not say what its " + iAxis +
                    " axis reports at the edges, which is taken for pixels: give --range");
    return {0, iPixels - 1};
}

ScreenMapC AdapterC::MakeMap()
{
    if (mOptions.range) {
        return {mScreen, mOptions.range->x, mOptions.range->y, mOptions.orientation};
    }
    const bool swapped = mOptions.orientation.swapped;
    return {mScreen, KnownRange("x", mPanel->GetRangeX(), swapped ? mScreen.height : mScreen.width),
            KnownRange("y", mPanel->GetRangeY(), swapped ? mScreen.width : mScreen.height), mOptions.orientation};
}

void AdapterC::Tell(const char* iWhat) const
{
    const auto say = mOptions.print ? Report : Log;
    say(LOG_NOTICE, "%s, \"%s\", %s", mPanel->GetPath().c_str(), mPanel->GetName().c_str(), iWhat);
}

} // namespace PEBBLETON
