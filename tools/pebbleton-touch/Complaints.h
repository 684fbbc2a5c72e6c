#ifndef PEBBLETON_TOUCH_COMPLAINTS_H
#define PEBBLETON_TOUCH_COMPLAINTS_H

#include <chrono>
#include <functional>
#include <map>
#include <string>

namespace PEBBLETON
{

// Reports what is wrong with panels, and each of it once a minute at the most: a loose plug must not fill the log.
class ComplaintsC
{
public:
    static constexpr std::chrono::seconds pause{60};

    using Time = std::chrono::steady_clock::time_point;

    // iClock: what time it is.
    explicit ComplaintsC(std::function<Time()> iClock = std::chrono::steady_clock::now);

    // Reports this as a warning, unless it did within the last minute.
    void Say(const std::string& iText);

private:
    std::function<Time()> mClock;
    std::map<std::string, Time> mSaid; // within the last minute, and when
};

} // namespace PEBBLETON

#endif
