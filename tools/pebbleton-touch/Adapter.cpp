#include "Adapter.h"

#include <cerrno>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

#include <poll.h>

#include "FrameBuffer.h"
#include "Log.h"
#include "Report.h"
#include "TouchPrinter.h"

namespace PEBBLETON
{

namespace
{

constexpr int forEver = -1;
constexpr int untilRetry = 100; // milliseconds; what another instance holds is free as soon as that one has ended

} // namespace

AdapterC::AdapterC(const TouchOptions& iOptions) : mOptions(iOptions), mWatch(iOptions.device)
{
}

int AdapterC::Run()
{
    if (!Prepare() || !mCommand.Start(mOptions.command)) {
        return failed;
    }
    while (!mCommand.GetStatus()) {
        Wait();
    }
    return *mCommand.GetStatus();
}

bool AdapterC::Prepare()
{
    if (mCommand.GetDescriptor() < 0 || mWatch.GetDescriptor() < 0) {
        Report(LOG_ERR,
               "signals or devices cannot be watched (%s): see whether file descriptors are used up, or those of "
               "inotify, fs.inotify.max_user_instances",
               std::strerror(errno));
        return false;
    }
    if (!FindScreen() || !mVirtual.Open(mScreen)) {
        return false;
    }
    LookForPanel();
    if (mPanel == nullptr) {
        Report(LOG_NOTICE, "there is no touch panel yet; it is used as soon as it comes");
    }
    return true;
}

bool AdapterC::FindScreen()
{
    const std::optional<ScreenSize> screen = mOptions.screen ? mOptions.screen : ReadFrameBufferSize();
    if (!screen) {
        Report(LOG_ERR, "/dev/fb0 does not tell the screen's size: give it, as in --screen 800x480");
        return false;
    }
    mScreen = *screen;
    return true;
}

void AdapterC::Wait()
{
    pollfd sources[] = {{mCommand.GetDescriptor(), POLLIN, 0},
                        {mWatch.GetDescriptor(), POLLIN, 0},
                        {mPanel != nullptr ? mPanel->GetDescriptor() : -1, POLLIN, 0}};
    if (poll(sources, std::size(sources), mWatch.IsTaken() ? untilRetry : forEver) < 0) {
        return; // this process was stopped and goes on
    }
    if (sources[2].revents != 0) {
        ReadPanel();
    }
    if (sources[1].revents != 0 || mWatch.IsTaken()) {
        mWatch.Drain();
        LookForPanel();
    }
    if (sources[0].revents != 0) {
        TakeSignals();
    }
}

// The touch goes first, so that it cannot fire on the way out.
void AdapterC::TakeSignals()
{
    while (const std::optional<int> signal = mCommand.TakeSignal()) {
        if (mTranslator != nullptr) {
            mTranslator->Cancel();
        }
        mCommand.HandOn(*signal);
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
    LosePanel();
    mPanel = std::move(panel);
    Tell("is used");
    Translate();
}

void AdapterC::LosePanel()
{
    mTranslator.reset();
    mPanel.reset();
}

void AdapterC::Translate()
{
    mTranslator.reset(); // which cancels its touch before anything else is said
    mTranslator = std::make_unique<TouchTranslatorC>(mVirtual, MakeMap(), mPanel->GetContacts());
}

ScreenMapC AdapterC::MakeMap() const
{
    const PanelRange range = mOptions.range.value_or(PanelRange{mPanel->GetRangeX(), mPanel->GetRangeY()});
    if (range.x.first == range.x.last || range.y.first == range.y.last) {
        Report(LOG_WARNING,
               "%s, \"%s\", does not say what it reports at its edges: touches are taken for pixels; give --range",
               mPanel->GetPath().c_str(), mPanel->GetName().c_str());
        const bool swapped = mOptions.orientation.swapped;
        return {mScreen,
                {0, (swapped ? mScreen.height : mScreen.width) - 1},
                {0, (swapped ? mScreen.width : mScreen.height) - 1},
                mOptions.orientation};
    }
    return {mScreen, range.x, range.y, mOptions.orientation};
}

void AdapterC::Tell(const char* iWhat) const
{
    const auto say = mOptions.print ? Report : Log;
    say(LOG_NOTICE, "%s, \"%s\", %s", mPanel->GetPath().c_str(), mPanel->GetName().c_str(), iWhat);
}

} // namespace PEBBLETON
