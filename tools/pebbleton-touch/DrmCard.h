#ifndef PEBBLETON_TOUCH_DRM_CARD_H
#define PEBBLETON_TOUCH_DRM_CARD_H

#include <string>

namespace PEBBLETON
{

// A DRM device, such as /dev/dri/card0. One program at a time is its master, and nobody else can show anything.
class DrmCardC
{
public:
    explicit DrmCardC(std::string iPath);

    // Whether another program is its master now; false also where the card cannot be opened. Asking leaves nothing
    // behind: the card is open only meanwhile.
    bool IsTaken() const;

private:
    std::string mPath;
};

} // namespace PEBBLETON

#endif
