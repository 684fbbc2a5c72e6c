#ifndef PEBBLETON_TOUCH_ADAPTER_H
#define PEBBLETON_TOUCH_ADAPTER_H

#include <memory>
#include <optional>
#include <string>

#include "Command.h"
#include "Complaints.h"
#include "Panel.h"
#include "PanelWatch.h"
#include "ScreenMap.h"
#include "StartWait.h"
#include "TouchOptions.h"
#include "TouchTranslator.h"
#include "VirtualPanel.h"

namespace PEBBLETON
{

// Runs the command with the virtual panel, and hands the touches of the real one on to it.
//
// The virtual panel stands before the command starts and until it has ended; the real one may come and go. It is
// blocked for as long as nothing happens.
class AdapterC
{
public:
    // The exit status when the command was not started, but for CommandC's own.
    static constexpr int failed = 125;

    // iOptions must outlive this object.
    explicit AdapterC(const TouchOptions& iOptions);

    // Waits for the display, for the virtual panel's device, and for a display that another program holds; then runs
    // the command. Returns the status to exit with: the command's, also when a signal ended it before it began, or
    // `failed` after the reason was reported. To be called once.
    int Run();

private:
    bool Prepare();
    bool FindScreen();
    bool FindDisplay();
    void NameCard();
    bool AwaitDevice() const;
    void NameDevice() const;
    bool AwaitCard() const;
    void Wait();
    void TakeSignals();
    void ReadPanel();
    void LookForPanel();
    void LosePanel();
    void Translate();
    AxisRange KnownRange(const char* iAxis, const AxisRange& iRange, int iPixels);
    ScreenMapC MakeMap();
    void Tell(const char* iWhat) const;

    const TouchOptions& mOptions;
    ScreenSize mScreen = {};
    std::string mCard; // the DRM device that the command is to use; empty: none is known
    VirtualPanelC mVirtual;
    CommandC mCommand;
    StartWaitC mWait; // uses mCommand
    ComplaintsC mComplaints;
    PanelWatchC mWatch;                            // uses mComplaints
    std::unique_ptr<PanelC> mPanel;                // the real one; null: there is none
    std::unique_ptr<PanelC> mSetAside;             // a pointer that gave way to a screen, kept from DirectFB
    std::optional<ScreenMapC> mMap;                // of mPanel
    std::unique_ptr<TouchTranslatorC> mTranslator; // from mPanel to mVirtual; null as long as mPanel is
};

} // namespace PEBBLETON

#endif
