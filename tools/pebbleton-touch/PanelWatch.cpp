#include "PanelWatch.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include <glob.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "Log.h"
#include "Report.h"

namespace PEBBLETON
{

namespace
{

// Attributes change when a daemon gives access to a new device.
constexpr std::uint32_t comings = IN_CREATE | IN_MOVED_TO | IN_ATTRIB;

// The devices that there are, by their numbers: event2 before event10.
std::vector<std::string> listDevices()
{
    glob_t found = {};
    std::vector<std::string> paths;
    if (glob("/dev/input/event[0-9]*", GLOB_NOSORT, nullptr, &found) == 0) {
        paths.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    }
    globfree(&found);
    std::sort(paths.begin(), paths.end(), [](const std::string& iOne, const std::string& iOther) {
        return std::make_pair(iOne.size(), iOne) < std::make_pair(iOther.size(), iOther);
    });
    return paths;
}

bool isPath(const std::string& iWanted)
{
    return !iWanted.empty() && iWanted.front() == '/';
}

} // namespace

PanelWatchC::PanelWatchC(std::string iWanted)
    : mWanted(std::move(iWanted)), mInotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
}

PanelWatchC::~PanelWatchC()
{
    if (mInotify >= 0) {
        close(mInotify);
    }
}

int PanelWatchC::GetDescriptor() const
{
    return mInotify;
}

void PanelWatchC::Drain() const
{
    char events[4096];
    while (read(mInotify, events, sizeof events) > 0) {
    }
}

std::unique_ptr<PanelC> PanelWatchC::Find(PanelKind iInsteadOf)
{
    mTaken = false;
    if (iInsteadOf != PanelKind::None && !mWanted.empty()) {
        return nullptr;
    }
    Watch();
    std::vector<std::unique_ptr<PanelC>> panels;
    for (const std::string& path : isPath(mWanted) ? std::vector{mWanted} : listDevices()) {
        auto panel = Open(path);
        if (panel != nullptr && panel->GetKind() > iInsteadOf) {
            panels.push_back(std::move(panel));
        }
    }
    std::stable_sort(panels.begin(), panels.end(),
                     [](const auto& iOne, const auto& iOther) { return iOne->GetKind() > iOther->GetKind(); });
    const auto free = std::find_if(panels.begin(), panels.end(), [this](const auto& iPanel) { return Grab(*iPanel); });
    return free == panels.end() ? nullptr : std::move(*free);
}

bool PanelWatchC::IsTaken() const
{
    return mTaken;
}

// The folder of a wanted path may itself come and go, so it is asked for each time; before it is looked into, so that
// nothing comes unseen.
void PanelWatchC::Watch() const
{
    inotify_add_watch(mInotify, "/dev/input", comings);
    if (isPath(mWanted)) {
        inotify_add_watch(mInotify, mWanted.substr(0, mWanted.rfind('/') + 1).c_str(), comings);
    }
}

// Null: it is not the wanted one, or of no use.
std::unique_ptr<PanelC> PanelWatchC::Open(const std::string& iPath)
{
    auto panel = PanelC::Open(iPath);
    if (panel == nullptr) {
        if (errno == EACCES || errno == EPERM) {
            Complain(iPath + " may not be read: run this as root, or as a user who may read input devices");
        }
        return nullptr;
    }
    if (!mWanted.empty() && !isPath(mWanted) && panel->GetName() != mWanted) {
        return nullptr;
    }
    const bool isWanted = !mWanted.empty();
    const PanelKind kind = panel->IsVirtual() ? PanelKind::None : panel->GetKind();
    if (isWanted && kind == PanelKind::None) {
        Complain(iPath + ", \"" + panel->GetName() +
                 "\", is no panel: it reports no touches, or is one of this program's own");
    }
    return kind >= (isWanted ? PanelKind::Pad : PanelKind::Pointer) ? std::move(panel) : nullptr;
}

bool PanelWatchC::Grab(PanelC& ioPanel)
{
    const bool grabbed = ioPanel.Grab();
    if (!grabbed) {
        mTaken = true;
        Complain(ioPanel.GetPath() + ", \"" + ioPanel.GetName() +
                 "\", is taken by another program, which must end first");
    }
    return grabbed;
}

void PanelWatchC::Complain(const std::string& iComplaint)
{
    if (iComplaint != mComplaint) {
        Report(LOG_WARNING, "%s", iComplaint.c_str());
        mComplaint = iComplaint;
    }
}

} // namespace PEBBLETON
