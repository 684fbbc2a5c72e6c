#include "PanelWatch.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <glob.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace PEBBLETON
{

namespace
{

constexpr int mostLinks = 40; // that the kernel follows

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

std::string nameOf(const PanelC& iPanel)
{
    return iPanel.GetPath() + ", \"" + iPanel.GetName() + '"';
}

bool isPath(const std::string& iWanted)
{
    return !iWanted.empty() && iWanted.front() == '/';
}

} // namespace

PanelWatchC::PanelWatchC(std::string iWanted, ComplaintsC& ioComplaints)
    : mWanted(std::move(iWanted)), mSayer(ioComplaints), mInotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
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
    mComplaints.clear();
    mTaken = false;
    if (iInsteadOf == PanelKind::Screen || (iInsteadOf != PanelKind::None && !mWanted.empty())) {
        return nullptr;
    }
    WatchFolders();
    auto found = GrabBest(OpenAll(iInsteadOf));
    mTries = mTaken ? mTries + 1 : 0;
    if (found == nullptr) {
        SayComplaints();
    } else {
        mSaid.clear();
    }
    return found;
}

int PanelWatchC::GetRetryTime() const
{
    constexpr int quickTries = 50;
    return !mTaken ? -1 : mTries < quickTries ? 100 : 1000;
}

// Before anything is looked for, so that nothing comes unseen.
void PanelWatchC::WatchFolders()
{
    WatchFolder("/dev/input");
    std::filesystem::path path = isPath(mWanted) ? mWanted : "";
    std::error_code error;
    for (int links = 0; !path.empty() && links < mostLinks; ++links) {
        WatchFolder(path.parent_path().string());
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        path = error ? target : path.parent_path() / target;
    }
}

// A folder that is not there comes in the one above it.
void PanelWatchC::WatchFolder(std::string iFolder)
{
    while (inotify_add_watch(mInotify, iFolder.empty() ? "/" : iFolder.c_str(), comings) < 0) {
        if (errno != ENOENT || iFolder.empty()) {
            mComplaints.push_back(iFolder + " cannot be watched (" + std::strerror(errno) +
                                  "), so that a panel may come unnoticed: see fs.inotify.max_user_watches");
            return;
        }
        iFolder.resize(iFolder.rfind('/'));
    }
}

std::vector<std::unique_ptr<PanelC>> PanelWatchC::OpenAll(PanelKind iInsteadOf)
{
    std::vector<std::unique_ptr<PanelC>> panels;
    for (const std::string& path : isPath(mWanted) ? std::vector{mWanted} : listDevices()) {
        auto panel = Open(path);
        if (panel != nullptr && panel->GetKind() > iInsteadOf) {
            panels.push_back(std::move(panel));
        }
    }
    return panels;
}

// Null: it is not the wanted one, or of no use.
std::unique_ptr<PanelC> PanelWatchC::Open(const std::string& iPath)
{
    auto panel = PanelC::Open(iPath);
    if (panel == nullptr) {
        ComplainOfOpening(iPath, errno);
        return nullptr;
    }
    if (!mWanted.empty() && !isPath(mWanted) && panel->GetName() != mWanted) {
        return nullptr;
    }
    const PanelKind kind = panel->IsVirtual() ? PanelKind::None : panel->GetKind();
    if (!mWanted.empty() && kind == PanelKind::None) {
        mComplaints.push_back(nameOf(*panel) + ", is no panel: it reports no touches, or is one of this program's own");
    }
    return kind >= (mWanted.empty() ? PanelKind::Pointer : PanelKind::Pad) ? std::move(panel) : nullptr;
}

// A device that is not there yet, or not any more, is nothing to complain of.
void PanelWatchC::ComplainOfOpening(const std::string& iPath, int iError)
{
    if (iError == EACCES || iError == EPERM) {
        mComplaints.push_back(iPath + " may not be read: run this as root, or as a user who may read input devices");
    } else if (isPath(mWanted) && iError != ENOENT && iError != ENODEV && iError != ENXIO) {
        mComplaints.push_back(iPath + " is no input device (" + std::strerror(iError) + ")");
    }
}

std::unique_ptr<PanelC> PanelWatchC::GrabBest(std::vector<std::unique_ptr<PanelC>> iPanels)
{
    std::stable_sort(iPanels.begin(), iPanels.end(),
                     [](const auto& iOne, const auto& iOther) { return iOne->GetKind() > iOther->GetKind(); });
    const auto free =
        std::find_if(iPanels.begin(), iPanels.end(), [this](const auto& iPanel) { return Grab(*iPanel); });
    return free == iPanels.end() ? nullptr : std::move(*free);
}

bool PanelWatchC::Grab(PanelC& ioPanel)
{
    const int error = ioPanel.Grab();
    if (error == EBUSY) {
        mTaken = true;
        mComplaints.push_back(nameOf(ioPanel) + ", is taken by another program, which must end first");
    }
    return error == 0;
}

void PanelWatchC::SayComplaints()
{
    for (const std::string& complaint : mComplaints) {
        if (mSaid.insert(complaint).second) {
            mSayer.Say(complaint);
        }
    }
}

} // namespace PEBBLETON
