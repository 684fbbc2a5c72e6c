#include "ThemeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace PEBBLETON
{

namespace
{

constexpr std::size_t largestText = std::size_t{1024} * 1024; // that is read: a device file may never end
constexpr const char* byteOrderMark = "\xEF\xBB\xBF";

struct Wording {
    const char* message; // of the reader, or how it begins
    const char* meaning;
};

// What the reader finds is often only what followed from a slip in another place.
constexpr Wording wordings[] = {
    {"unmatched {",
     "the file ends inside a section: a } is missing, or one has no blank before it and so is part of the "
     "word there"},
    {"unmatched }", "there is no section to end here: a { is missing, or one has no blank before it and so is part of "
                    "the word there"},
    {"unexpected {", "a { stands here without a name before it"},
    {"unknown directive",
     "a line that begins with # is a directive, and there is only #include: a comment begins with a semicolon"},
    {"unknown escape sequence",
     "a backslash begins an escape, and there is none of this kind: write \\\\ for a backslash"},
    {"character expected after backslash", "a backslash ends a word: write \\\\ for a backslash"},
    {"unexpected end of line", "a double quote that is opened is not closed on the same line"},
    {"expected end of line after \\", "nothing may follow the backslash that continues a value on the next line"},
    {"expected \" after \\", "a value that is continued from the line before goes on with a double quote"},
    {"expected \"", "the name of the file to include stands between double quotes"},
    {"unexpected \\", "a backslash stands after a quoted name: only a value can be continued"},
    {"expected end of line", "nothing may follow an #include on its line"},
    {"cannot open include file", ""},
    {"include depth too large", "the files include each other without end"},
};

std::string explain(const std::string& iMessage)
{
    for (const Wording& wording : wordings) {
        if (iMessage.compare(0, std::strlen(wording.message), wording.message) == 0) {
            return *wording.meaning == '\0' ? iMessage : wording.meaning;
        }
    }
    return iMessage;
}

bool startsWith(const std::string& iText, const std::string& iStart)
{
    return iText.compare(0, iStart.size(), iStart) == 0;
}

bool isUtf16(const std::string& iText)
{
    const std::string start = iText.substr(0, 2);
    return start == "\xFF\xFE" || start == "\xFE\xFF" ||
           (start.size() == 2 && (start[0] == '\0') != (start[1] == '\0'));
}

// With one blank for each run of them, line ends apart.
std::string foldBlanks(const std::string& iText)
{
    std::string result;
    for (const char character : iText) {
        const bool blank = character == ' ' || character == '\t';
        if (!blank || result.empty() || result.back() != ' ') {
            result += blank ? ' ' : character;
        }
    }
    return result;
}

} // namespace

ThemeFileC::ThemeFileC(std::string iFileName)
    : mFileName(std::move(iFileName)), mTree(std::make_unique<boost::property_tree::ptree>()), mCopy(-1)
{
}

ThemeFileC::~ThemeFileC()
{
    if (mCopy != -1) {
        close(mCopy);
    }
}

bool ThemeFileC::Load(FindingsC& ioFindings)
{
    if (!ReadText(ioFindings) || !CheckEncoding(ioFindings) || !Parse(ioFindings)) {
        return false;
    }
    CheckNames(ioFindings);
    KeepCopy();
    return true;
}

const std::string& ThemeFileC::GetName() const
{
    return mFileName;
}

const std::string& ThemeFileC::GetHiddenName() const
{
    return mHiddenName;
}

const boost::property_tree::ptree& ThemeFileC::GetTree() const
{
    return *mTree;
}

std::string ThemeFileC::GetTextPath() const
{
    return "/proc/self/fd/" + std::to_string(mCopy);
}

bool ThemeFileC::FindTornValue(const std::string& iValue, const std::string& iName, std::string& ioWhole) const
{
    const std::string text = foldBlanks(mText);
    const std::size_t start = text.find(' ' + iValue + ' ' + iName);
    if (iValue.empty() || start == std::string::npos) {
        return false;
    }
    std::string line = text.substr(start + 1, text.find_first_of("\r\n;{}\"", start) - start - 1);
    // A path may hold the name of the other one as a word; what follows a name is a whole path, or a quote that ended
    // the line.
    for (const char* known : {" normal /", " pressed /", " button "}) {
        line.erase(std::min(line.find(known), line.size()));
    }
    for (const std::string known : {" normal ", " pressed "}) {
        if (line.size() >= known.size() && line.compare(line.size() - known.size(), known.size(), known) == 0) {
            line.erase(line.size() - known.size());
        }
    }
    ioWhole = line.substr(0, line.find_last_not_of(' ') + 1);
    return ioWhole.size() > iValue.size();
}

bool ThemeFileC::ReadText(FindingsC& ioFindings)
{
    std::ifstream stream(mFileName, std::ios::binary);
    struct stat status = {};
    if (!stream || stat(mFileName.c_str(), &status) != 0) {
        ioFindings.AddError(std::string("cannot be read: ") + std::strerror(errno) +
                            "; the menu ends with the status 255");
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        ioFindings.AddError("is a directory; the menu ends with the status 255");
        return false;
    }
    mText.resize(largestText + 1);
    stream.read(mText.data(), static_cast<std::streamsize>(mText.size()));
    mText.resize(static_cast<std::size_t>(stream.gcount()));
    if (mText.size() > largestText) {
        ioFindings.AddError("is larger than 1 MB, as no theme is: it is not read");
        return false;
    }
    return true;
}

bool ThemeFileC::CheckEncoding(FindingsC& ioFindings)
{
    if (isUtf16(mText)) {
        ioFindings.AddError("is in UTF-16, in which the menu finds none of its names, and it ends with the status 255: "
                            "save the file as UTF-8 without a byte order mark");
        return false;
    }
    if (startsWith(mText, byteOrderMark)) {
        while (startsWith(mText, byteOrderMark)) {
            mText.erase(0, std::strlen(byteOrderMark));
        }
        const std::string firstName = mText.substr(0, mText.find_first_of(" \t\r\n;"));
        ioFindings.AddError(
            "begins with a byte order mark, three bytes that are not seen: the menu takes them for " +
            (firstName.empty() ? "a name" : "a part of the first name, and finds no \"" + firstName + '"') +
            "; save the file as UTF-8 without a byte order mark");
        mHiddenName = firstName;
    }
    return true;
}

bool ThemeFileC::Parse(FindingsC& ioFindings)
{
    try {
        std::istringstream stream(mText);
        stream.imbue(std::locale());
        boost::property_tree::read_info(stream, *mTree);
        return true;
    } catch (const boost::property_tree::info_parser_error& error) {
        // The text itself has no name for the reader, a file that it includes has.
        const bool included = std::ifstream(error.filename()).good();
        ioFindings.AddErrorAt(included ? error.filename() : mFileName, error.line(),
                              explain(error.message()) + "; the menu ends with the status 255");
        return false;
    }
}

// A mark that is left stands in the middle of the text, as at the beginning of a file that is included.
void ThemeFileC::CheckNames(FindingsC& ioFindings)
{
    std::vector<const boost::property_tree::ptree*> nodes = {mTree.get()};
    while (!nodes.empty()) {
        const boost::property_tree::ptree& node = *nodes.back();
        nodes.pop_back();
        for (const auto& [name, child] : node) {
            if (startsWith(name, byteOrderMark) || (name.size() > 1 && isUtf16(name))) {
                ioFindings.AddError("the name \"" + name +
                                    "\" begins with a byte order mark, which the menu takes for a part of it: save the "
                                    "file, or the one that is included here, as UTF-8 without a byte order mark");
            }
            nodes.push_back(&child);
        }
    }
}

void ThemeFileC::KeepCopy()
{
    mCopy = memfd_create("theme", MFD_CLOEXEC);
    std::ofstream stream(GetTextPath(), std::ios::binary);
    stream << mText << std::flush;
    if (!stream) {
        throw std::runtime_error("the theme cannot be kept in memory");
    }
}

} // namespace PEBBLETON
