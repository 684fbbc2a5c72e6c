#include "EntryCheck.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "EntryText.h"

namespace PEBBLETON
{

namespace
{

constexpr const char* fieldNames[] = {"code", "x", "y", "width", "height"};

std::uint32_t seenByParent(std::uint32_t iCode)
{
    return iCode & 0xFFU;
}

// What else ends the menu, or seems to, with the status iStatus; empty: nothing.
std::string otherMeaning(std::uint32_t iStatus)
{
    if (iStatus == 255) {
        return "the status of a menu in which nothing was chosen";
    }
    if ((iStatus >= 41 && iStatus <= 45) || (iStatus >= 169 && iStatus <= 205)) {
        return "the status of a failure of DirectFB";
    }
    if (iStatus == 125) {
        return "the status of a failure of pebbleton-touch";
    }
    if (iStatus == 126 || iStatus == 127) {
        return "what a shell reports when the menu cannot be started";
    }
    if (iStatus > 128 && iStatus <= 128 + 31) {
        return "what a shell reports when signal " + std::to_string(iStatus - 128) + " ended the menu";
    }
    return "";
}

bool isHexadecimal(const std::string& iNumber, const std::string& iRest)
{
    return iNumber.find_first_not_of("+-0") == std::string::npos && iRest.size() > 1 &&
           (iRest[0] == 'x' || iRest[0] == 'X') &&
           std::string("0123456789abcdefABCDEF").find(iRest[1]) != std::string::npos;
}

std::string withoutZeros(const std::string& iNumber)
{
    return iNumber.substr(std::min(iNumber.find_first_not_of('0'), iNumber.size() - 1));
}

std::string quote(const std::string& iText)
{
    return '"' + iText + '"';
}

// Why the menu refuses the entry, and what to do.
std::string explainRefusal(const std::string& iText)
{
    const EntryTextC text(iText);
    const std::size_t count = text.GetNumbers().size();
    const std::string& rest = text.GetRest();
    if (count == 0 || isHexadecimal(text.GetNumbers().back(), rest)) {
        return count == 0 ? "it does not begin with a number: write code:x:y:width:height"
                          : "numbers are decimal, and " +
                                quote(text.GetNumbers().back() + rest.substr(0, rest.find(':'))) + " is not";
    }
    if (rest.find_first_not_of(" \t") != std::string::npos && rest[rest.find_first_not_of(" \t")] == ':' &&
        rest[0] != ':') {
        return "no blank may stand before a colon, as after " + quote(text.GetNumbers().back());
    }
    return "there must be five numbers with colons between them, code:x:y:width:height, and after " +
           std::to_string(count) + (rest.empty() ? " it ends" : " there is " + quote(rest));
}

} // namespace

EntryCheckC::EntryCheckC(const ThemeFileC& iFile, const ThemeC& iTheme, FindingsC& ioFindings)
    : mFile(iFile), mTheme(iTheme), mFindings(ioFindings)
{
}

void EntryCheckC::Run()
{
    CheckSection(mTheme.GetLongPressEntries());
    CheckSection(mTheme.GetPushEntries());
    CheckCodesDiffer();
}

void EntryCheckC::CheckSection(const std::vector<Entry>& iEntries)
{
    for (const Entry& entry : iEntries) {
        if (entry.accepted) {
            CheckNumbers(entry);
            CheckCode(entry);
            continue;
        }
        // The rest of a refused entry is told of with it; after one that is accepted there is no rest.
        std::string whole;
        const Entry* before = &entry == &iEntries.front() ? nullptr : std::prev(&entry);
        if (before == nullptr || before->accepted || !mFile.FindTornValue(before->value, entry.name, whole)) {
            CheckRefused(entry);
        }
    }
}

void EntryCheckC::CheckRefused(const Entry& iEntry)
{
    const std::string refused = describe(iEntry) + " is refused, and the menu ends with the status 255: ";
    if (iEntry.name != "button") {
        mFindings.AddError(
            refused + "it is no \"button\", but as many children of a section are read as are named so; take it out");
        return;
    }
    std::string whole;
    if (mFile.FindTornValue(iEntry.value, "", whole)) {
        mFindings.AddError(refused + "it ends at its first blank: write \"" + whole + "\" without blanks");
        return;
    }
    mFindings.AddError(refused + explainRefusal(iEntry.value));
}

void EntryCheckC::CheckNumbers(const Entry& iEntry)
{
    const EntryTextC text(iEntry.value);
    const std::uint32_t values[] = {iEntry.code, iEntry.rectangle.x, iEntry.rectangle.y, iEntry.rectangle.width,
                                    iEntry.rectangle.height};
    const std::vector<std::string>& numbers = text.GetNumbers();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (withoutZeros(numbers[i]) != std::to_string(values[i])) {
            mFindings.AddWarning(describe(iEntry) + ": the menu reads the " + fieldNames[i] + " " + numbers[i] +
                                 " as " + std::to_string(values[i]) +
                                 ": write a number from 0 to 4294967295 without a sign");
        }
    }
    if (isHexadecimal(numbers.back(), text.GetRest())) {
        mFindings.AddWarning(describe(iEntry) + ": the menu reads the height " + numbers.back() + text.GetRest() +
                             " as 0: write a decimal number");
    } else if (!text.GetRest().empty()) {
        mFindings.AddWarning(describe(iEntry) + ": the menu drops what follows the fifth number, " +
                             quote(text.GetRest()) + ": take it out");
    }
}

void EntryCheckC::CheckCode(const Entry& iEntry)
{
    const std::uint32_t status = seenByParent(iEntry.code);
    const std::string meaning = otherMeaning(status);
    std::string text;
    if (iEntry.code != status) {
        text = "of the code " + std::to_string(iEntry.code) + " the parent of the menu sees the low 8 bits, " +
               std::to_string(status) + (meaning.empty() ? "" : ", which is also " + meaning);
    } else if (!meaning.empty()) {
        text = "the code " + std::to_string(status) + " is also " + meaning;
    } else if (status > 40) {
        text =
            "the code " + std::to_string(status) + " is above 40, and only up to there is a status sure to be a choice";
    } else {
        return;
    }
    mFindings.AddWarning(describe(iEntry) + ": " + text + ": use a code from 0 to 40");
}

void EntryCheckC::CheckCodesDiffer()
{
    std::vector<Entry> buttons = mTheme.GetLongPressButtons();
    const std::vector<Entry> pushButtons = mTheme.GetPushButtons();
    buttons.insert(buttons.end(), pushButtons.begin(), pushButtons.end());
    for (auto entry = buttons.begin(); entry != buttons.end(); ++entry) {
        const auto first = std::find_if(buttons.begin(), entry, [&](const Entry& iOther) {
            return seenByParent(iOther.code) == seenByParent(entry->code);
        });
        if (first != entry) {
            mFindings.AddWarning(describe(*entry) + ": the parent of the menu sees the status " +
                                 std::to_string(seenByParent(entry->code)) + " and cannot tell it from " +
                                 describe(*first) + ": give each a code of its own");
        }
    }
}

} // namespace PEBBLETON
