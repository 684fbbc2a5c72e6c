#include "Findings.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <boost/locale/utf.hpp>

namespace PEBBLETON
{

namespace
{

namespace utf = boost::locale::utf;

// Controls, and what is not seen or turns the text around it.
bool isHidden(utf::code_point iCharacter)
{
    constexpr struct {
        utf::code_point first;
        utf::code_point last;
    } ranges[] = {{0, 0x1F},        {0x7F, 0x9F},     {0xAD, 0xAD},      {0x61C, 0x61C},
                  {0x180E, 0x180E}, {0x200B, 0x200F}, {0x2028, 0x202E},  {0x2060, 0x206F},
                  {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [=](const auto& iRange) { return iCharacter >= iRange.first && iCharacter <= iRange.last; });
}

} // namespace

std::string printable(const std::string& iText)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string result;
    for (auto start = iText.begin(); start != iText.end();) {
        auto end = start;
        const utf::code_point character = utf::utf_traits<char>::decode(end, iText.end());
        const bool valid = character != utf::illegal && character != utf::incomplete;
        if (valid && !isHidden(character)) {
            result.append(start, end);
            start = end;
            continue;
        }
        for (end = valid ? end : std::next(start); start != end; ++start) {
            const auto byte = static_cast<unsigned char>(*start);
            result += {'\\', 'x', digits[byte / 16U], digits[byte % 16U]};
        }
    }
    return result;
}

FindingsC::FindingsC(std::string iFileName) : mFileName(std::move(iFileName))
{
}

void FindingsC::AddError(const std::string& iText)
{
    mFindings.push_back({true, printable(mFileName + ": error: " + iText)});
}

void FindingsC::AddWarning(const std::string& iText)
{
    mFindings.push_back({false, printable(mFileName + ": warning: " + iText)});
}

void FindingsC::AddErrorAt(const std::string& iFileName, unsigned long iLine, const std::string& iText)
{
    mFindings.push_back({true, printable(iFileName + ':' + std::to_string(iLine) + ": error: " + iText)});
}

bool FindingsC::HasErrors() const
{
    return Has(true);
}

bool FindingsC::HasWarnings() const
{
    return Has(false);
}

std::vector<std::string> FindingsC::GetErrors() const
{
    std::vector<std::string> result;
    for (const Finding& finding : mFindings) {
        if (finding.isError) {
            result.push_back(finding.line);
        }
    }
    return result;
}

void FindingsC::PrintAll(std::ostream& ioStream) const
{
    for (const Finding& finding : mFindings) {
        ioStream << finding.line << '\n';
    }
}

void FindingsC::PrintErrors(std::ostream& ioStream) const
{
    for (const std::string& line : GetErrors()) {
        ioStream << line << '\n';
    }
}

bool FindingsC::Has(bool iErrors) const
{
    return std::any_of(mFindings.begin(), mFindings.end(),
                       [=](const Finding& iFinding) { return iFinding.isError == iErrors; });
}

} // namespace PEBBLETON
