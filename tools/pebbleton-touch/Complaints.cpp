#include "Complaints.h"

#include <iterator>
#include <utility>

#include "Log.h"
#include "Report.h"

namespace PEBBLETON
{

ComplaintsC::ComplaintsC(std::function<Time()> iClock) : mClock(std::move(iClock))
{
}

void ComplaintsC::Say(const std::string& iText)
{
    const Time now = mClock();
    for (auto said = mSaid.begin(); said != mSaid.end();) {
        said = now - said->second < pause ? std::next(said) : mSaid.erase(said);
    }
    if (mSaid.emplace(iText, now).second) {
        Report(LOG_WARNING, "%s", iText.c_str());
    }
}

} // namespace PEBBLETON
