#ifndef PEBBLETON_TOUCH_PANEL_WATCH_H
#define PEBBLETON_TOUCH_PANEL_WATCH_H

#include <memory>
#include <string>

#include "Panel.h"

namespace PEBBLETON
{

// Finds the panel to be used, at the start and when devices come.
class PanelWatchC
{
public:
    // iWanted: the path (it begins with a slash) or the exact name of the one device that may be used; empty: the
    // first of the best kind.
    explicit PanelWatchC(std::string iWanted);
    ~PanelWatchC();
    PanelWatchC(const PanelWatchC&) = delete;
    PanelWatchC& operator=(const PanelWatchC&) = delete;

    // To be polled; readable when a device may have come. Below 0: it could not be made.
    int GetDescriptor() const;

    // Forgets what has made the descriptor readable.
    void Drain() const;

    // The panel that is to be used instead of one of this kind, grabbed; null: there is none. When one that is wanted
    // cannot be used, that is reported once.
    std::unique_ptr<PanelC> Find(PanelKind iInsteadOf);

    // Whether the last Find met a panel that somebody else has grabbed. Nothing tells when they let go of it.
    bool IsTaken() const;

private:
    void Watch() const;
    std::unique_ptr<PanelC> Open(const std::string& iPath);
    bool Grab(PanelC& ioPanel);
    void Complain(const std::string& iComplaint);

    std::string mWanted;
    int mInotify; // owned
    bool mTaken = false;
    std::string mComplaint; // the last one, which is not repeated
};

} // namespace PEBBLETON

#endif
