#include "EntryText.h"

#include <algorithm>

namespace PEBBLETON
{

EntryTextC::EntryTextC(const std::string& iText)
{
    constexpr std::size_t wanted = 5;
    constexpr const char* digits = "0123456789";
    std::size_t position = 0;
    while (mNumbers.size() < wanted && (mNumbers.empty() || iText[position] == ':')) {
        const std::size_t colon = mNumbers.empty() ? 0 : 1;
        const std::size_t start = std::min(iText.find_first_not_of(" \t\n\v\f\r", position + colon), iText.size());
        const std::size_t sign = iText[start] == '-' || iText[start] == '+' ? 1 : 0;
        const std::size_t end = std::min(iText.find_first_not_of(digits, start + sign), iText.size());
        if (end == start + sign) {
            break;
        }
        mNumbers.push_back(iText.substr(start, end - start));
        position = end;
    }
    mRest = iText.substr(position);
}

const std::vector<std::string>& EntryTextC::GetNumbers() const
{
    return mNumbers;
}

const std::string& EntryTextC::GetRest() const
{
    return mRest;
}

} // namespace PEBBLETON
