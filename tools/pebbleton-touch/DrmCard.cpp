#include "DrmCard.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace PEBBLETON
{

namespace
{

// From the kernel's drm.h, which belongs to another package on each system.
constexpr unsigned long ioctlAuthMagic = _IOW('d', 0x11, unsigned);

} // namespace

DrmCardC::DrmCardC(std::string iPath) : mPath(std::move(iPath))
{
}

// Whoever opens a card without a master becomes it. A master who admits the client 0, which is none, hears EINVAL.
bool DrmCardC::IsTaken() const
{
    const int card = open(mPath.c_str(), O_RDWR | O_CLOEXEC);
    if (card < 0) {
        return false;
    }
    unsigned nobody = 0;
    const bool isTaken = ioctl(card, ioctlAuthMagic, &nobody) != 0 && errno == EACCES;
    close(card);
    return isTaken;
}

} // namespace PEBBLETON
