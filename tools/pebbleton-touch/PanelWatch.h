#ifndef PEBBLETON_TOUCH_PANEL_WATCH_H
#define PEBBLETON_TOUCH_PANEL_WATCH_H

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Complaints.h"
#include "Panel.h"

namespace PEBBLETON
{

// Finds the panel to be used, at the start and when devices come.
class PanelWatchC
{
public:
    // iWanted: the path (it begins with a slash) or the exact name of the one device that may be used; empty: the first
    // of the best kind. ioComplaints must outlive this object.
    PanelWatchC(std::string iWanted, ComplaintsC& ioComplaints);
    ~PanelWatchC();
    PanelWatchC(const PanelWatchC&) = delete;
    PanelWatchC& operator=(const PanelWatchC&) = delete;

    // To be polled; readable when a device may have come. Below 0: it could not be made.
    int GetDescriptor() const;

    // Forgets what has made the descriptor readable.
    void Drain() const;

    // The panel that is to be used instead of one of this kind, grabbed; null: there is none. Why one that is there
    // cannot be used is then reported, each reason once until one is found.
    std::unique_ptr<PanelC> Find(PanelKind iInsteadOf);

    // After how many milliseconds Find is to be asked again though nothing has come, or below 0. It is so when somebody
    // else has grabbed a panel, since nothing tells when they let go: in most cases an instance that is about to end.
    int GetRetryTime() const;

private:
    void WatchFolders();
    void WatchFolder(std::string iFolder);
    std::vector<std::unique_ptr<PanelC>> OpenAll(PanelKind iInsteadOf);
    std::unique_ptr<PanelC> Open(const std::string& iPath);
    std::unique_ptr<PanelC> GrabBest(std::vector<std::unique_ptr<PanelC>> iPanels);
    bool Grab(PanelC& ioPanel);
    void ComplainOfOpening(const std::string& iPath, int iError);
    void SayComplaints();

    std::string mWanted;
    ComplaintsC& mSayer;
    int mInotify; // owned
    bool mTaken = false;
    int mTries = 0;                       // since when it is taken
    std::vector<std::string> mComplaints; // of the last Find
    std::set<std::string> mSaid;          // those that were reported
};

} // namespace PEBBLETON

#endif
