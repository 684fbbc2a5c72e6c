#include "StructureCheck.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include <boost/property_tree/ptree.hpp>

#include "Application.h"
#include "Findings.h"
#include "Theme.h"
#include "ThemeFile.h"

namespace PEBBLETON
{

namespace
{

std::string lowerCase(std::string iText)
{
    std::transform(iText.begin(), iText.end(), iText.begin(),
                   [](unsigned char iCharacter) { return static_cast<char>(std::tolower(iCharacter)); });
    return iText;
}

// The number of characters to be put in, left out or exchanged to make one word of the other.
std::size_t distance(const std::string& iFrom, const std::string& iTo)
{
    std::vector<std::size_t> row(iTo.size() + 1);
    for (std::size_t column = 0; column <= iTo.size(); ++column) {
        row[column] = column;
    }
    for (std::size_t line = 1; line <= iFrom.size(); ++line) {
        std::size_t diagonal = row[0];
        row[0] = line;
        for (std::size_t column = 1; column <= iTo.size(); ++column) {
            const std::size_t exchanged = diagonal + (iFrom[line - 1] == iTo[column - 1] ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({exchanged, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

bool isMisspelling(const std::string& iWritten, const std::string& iMeant)
{
    // A long name has room for more slips, and no name of the menu is near another one.
    return iWritten.size() < 64 && distance(lowerCase(iWritten), lowerCase(iMeant)) <= (iMeant.size() > 9 ? 3 : 2);
}

std::string quote(const std::string& iText)
{
    return '"' + iText + '"';
}

std::string quote(const boost::property_tree::ptree::value_type& iChild)
{
    return quote(iChild.first + (iChild.second.data().empty() ? "" : " ") + iChild.second.data());
}

bool isOutermost(const std::string& iName)
{
    return iName == "image" || iName == ThemeC::longPressSection || iName == ThemeC::pushSection;
}

// Whether a child of some other name may be that section: it holds buttons, and its name tells which kind.
bool holdsButtonsOf(const std::string& iSection, const boost::property_tree::ptree::value_type& iChild)
{
    const bool isLong = lowerCase(iChild.first).find("long") != std::string::npos;
    return iChild.second.count("button") != 0 && iSection == (isLong ? ThemeC::longPressSection : ThemeC::pushSection);
}

// What becomes of a name that is not asked for where it stands.
std::string explainIgnored(const std::string& iName)
{
    return isOutermost(iName) ? " is ignored in here: it belongs at the outermost level, and a } is missing before it"
                              : " is nothing that the menu knows and is ignored";
}

bool isAccepted(const boost::property_tree::ptree::value_type& iChild)
{
    std::uint32_t code = 0;
    Rectangle rectangle = {};
    return ReadButtonEntry(iChild.second.data(), code, rectangle);
}

bool isButton(const boost::property_tree::ptree::value_type& iChild)
{
    return iChild.first == "button";
}

class StructureCheckC
{
public:
    StructureCheckC(const ThemeFileC& iFile, FindingsC& ioFindings);

    void Run();

private:
    using Node = boost::property_tree::ptree;
    using Child = Node::value_type;

    // A name that the menu asks for, and what follows where there is none.
    struct Known {
        std::string name;
        bool required;
        std::string consequence;
    };

    void CheckNames(const Node& iNode, const std::string& iPrefix, const std::vector<Known>& iKnown);
    void CheckMissing(const Node& iNode, const std::string& iPrefix, const Known& iWanted,
                      const std::vector<Known>& iKnown);
    void CheckTornPaths(const Node& iImage);
    void ExplainRest(Node::const_iterator iFirst, Node::const_iterator iEnd, std::string iText);
    void CheckSection(const std::string& iSection);
    void CheckBraces(const std::string& iSection);
    void CheckButtonCount();
    void ReportLost(const std::string& iSection, const Child& iStray, const Child& iLost);
    void ReportIgnored(const std::string& iSection, const Child& iStray);
    void Report(bool iError, const std::string& iText);

    const ThemeFileC& mFile;
    FindingsC& mFindings;
    std::set<const Child*> mExplained; // strays of which a finding tells already
};

StructureCheckC::StructureCheckC(const ThemeFileC& iFile, FindingsC& ioFindings) : mFile(iFile), mFindings(ioFindings)
{
}

void StructureCheckC::Run()
{
    const std::string ended = "the menu ends with the status 255";
    const std::string noButtons = "the menu has no buttons of this kind and logs \"No such node\" at each start";
    CheckNames(mFile.GetTree(), "",
               {{"image", true, ended},
                {ThemeC::longPressSection, false, noButtons},
                {ThemeC::pushSection, false, noButtons}});
    const auto image = mFile.GetTree().get_child_optional("image");
    if (image) {
        CheckTornPaths(*image);
        CheckNames(*image, "image: ", {{"normal", true, ended}, {"pressed", true, ended}});
    }
    CheckSection(ThemeC::longPressSection);
    CheckSection(ThemeC::pushSection);
    for (const char* section : {"image", ThemeC::longPressSection, ThemeC::pushSection}) {
        CheckBraces(section);
    }
    CheckButtonCount();
}

void StructureCheckC::CheckNames(const Node& iNode, const std::string& iPrefix, const std::vector<Known>& iKnown)
{
    for (const Known& known : iKnown) {
        const auto count = std::count_if(iNode.begin(), iNode.end(), [&](const Child& iChild) {
            return iChild.first == known.name && mExplained.count(&iChild) == 0;
        });
        if (count == 0) {
            CheckMissing(iNode, iPrefix, known, iKnown);
        } else if (count > 1) {
            mFindings.AddWarning(iPrefix + quote(known.name) + " stands here " + std::to_string(count) +
                                 " times: the menu reads the first one alone; put into it what the others hold");
        }
    }
    for (const Child& child : iNode) {
        const bool isKnown =
            std::any_of(iKnown.begin(), iKnown.end(), [&](const Known& iName) { return iName.name == child.first; });
        if (!isKnown && mExplained.count(&child) == 0) {
            mFindings.AddWarning(iPrefix + quote(child) + explainIgnored(child.first));
        }
    }
}

void StructureCheckC::CheckMissing(const Node& iNode, const std::string& iPrefix, const Known& iWanted,
                                   const std::vector<Known>& iKnown)
{
    const auto isFree = [&](const Child& iChild) {
        return mExplained.count(&iChild) == 0 && std::none_of(iKnown.begin(), iKnown.end(), [&](const Known& iName) {
                   return iName.name == iChild.first;
               });
    };
    auto misspelt = std::find_if(iNode.begin(), iNode.end(), [&](const Child& iChild) {
        return isFree(iChild) && isMisspelling(iChild.first, iWanted.name);
    });
    if (misspelt == iNode.end()) {
        misspelt = std::find_if(iNode.begin(), iNode.end(), [&](const Child& iChild) {
            return isFree(iChild) && holdsButtonsOf(iWanted.name, iChild);
        });
    }
    if (misspelt == iNode.end()) {
        Report(iWanted.required, iPrefix + "there is no " + quote(iWanted.name) + ": " + iWanted.consequence +
                                     (iWanted.required ? "" : "; empty braces after the name say that none are meant"));
        return;
    }
    mExplained.insert(&*misspelt);
    const std::size_t buttons = misspelt->second.count("button");
    Report(iWanted.required, iPrefix + quote(misspelt->first) + " is not " + quote(iWanted.name) +
                                 ", which is missing: " + iWanted.consequence +
                                 (buttons == 0 ? ""
                                               : "; its " + std::to_string(buttons) +
                                                     (buttons == 1 ? " button is dead" : " buttons are dead")));
}

void StructureCheckC::CheckTornPaths(const Node& iImage)
{
    for (auto child = iImage.begin(); child != iImage.end() && std::next(child) != iImage.end(); ++child) {
        std::string whole;
        const auto rest = std::next(child);
        const bool isPath = child->first == "normal" || child->first == "pressed";
        // A name of the menu's own is one, unless there is another of it.
        const bool isName = (rest->first == "normal" || rest->first == "pressed") && iImage.count(rest->first) == 1;
        if (!isPath || isName || mExplained.count(&*child) != 0 ||
            !mFile.FindTornValue(child->second.data(), rest->first, whole)) {
            continue;
        }
        const bool isFile = std::ifstream(child->second.data()).good();
        std::string text = "image: the path " + quote(*child) + " ends at its first blank, and what follows is ";
        text += isFile ? "ignored: take it out, or if it belongs to the path, " : "taken for another name: ";
        text += "write " + child->first + " \"" + whole + '"';
        Report(!isFile, text);
        ExplainRest(rest, iImage.end(), whole.substr(child->second.data().size()));
    }
}

// Marks the strays that iText, each after a blank, is made of.
void StructureCheckC::ExplainRest(Node::const_iterator iFirst, Node::const_iterator iEnd, std::string iText)
{
    for (; iFirst != iEnd; ++iFirst) {
        const std::string& value = iFirst->second.data();
        const std::string words = ' ' + iFirst->first + (value.empty() ? "" : " ") + value;
        if (iText.compare(0, words.size(), words) != 0) {
            return;
        }
        mExplained.insert(&*iFirst);
        iText.erase(0, words.size());
    }
}

// As many children as are named "button" are read, from the top and whatever their names: each stray among them takes
// the place of one "button" at the end.
void StructureCheckC::CheckSection(const std::string& iSection)
{
    const auto section = mFile.GetTree().get_child_optional(iSection);
    if (!section) {
        return;
    }
    const auto readEnd = std::next(section->begin(), static_cast<std::ptrdiff_t>(section->count("button")));
    auto lost = std::find_if(readEnd, section->end(), isButton);
    bool isRead = true;
    for (auto child = section->begin(); child != section->end(); ++child) {
        isRead = isRead && child != readEnd;
        if (isButton(*child)) {
            continue;
        }
        std::string whole;
        if (isRead) {
            ReportLost(iSection, *child, *lost);
            lost = std::find_if(std::next(lost), section->end(), isButton);
        } else if (child == section->begin() || isAccepted(*std::prev(child)) ||
                   !mFile.FindTornValue(std::prev(child)->second.data(), child->first, whole)) {
            ReportIgnored(iSection, *child);
        }
    }
}

// A section has no value, and what is read in it has no braces.
void StructureCheckC::CheckBraces(const std::string& iSection)
{
    const auto section = mFile.GetTree().get_child_optional(iSection);
    if (!section) {
        return;
    }
    if (!section->data().empty()) {
        mFindings.AddWarning(iSection + ": " + quote(section->data()) +
                             " is ignored: nothing stands between the name of a section and its {");
    }
    for (const Child& child : *section) {
        if (isOutermost(child.first)) {
            continue; // A finding tells already.
        }
        for (const Child& nested : child.second) {
            mFindings.AddWarning(iSection + ": " + quote(nested) +
                                 (isOutermost(nested.first) ? explainIgnored(nested.first)
                                                            : " is ignored, since it stands in the braces of " +
                                                                  quote(child) + ": take it out of them"));
        }
    }
}

void StructureCheckC::CheckButtonCount()
{
    std::size_t count = 0;
    for (const char* name : {ThemeC::longPressSection, ThemeC::pushSection}) {
        const auto section = mFile.GetTree().get_child_optional(name);
        const std::size_t buttons = section ? section->count("button") : 0;
        if (name == std::string(ThemeC::longPressSection) && buttons > 1) {
            mFindings.AddWarning(std::string(name) + ": there are " + std::to_string(buttons) +
                                 " buttons, but the first one fires at every long touch: keep one");
        }
        count += buttons;
    }
    if (count == 0) {
        mFindings.AddWarning("there is no button: nothing that a user does ends the menu");
    }
}

// A stray that is refused ends the menu, and then it does not matter what is lost.
void StructureCheckC::ReportLost(const std::string& iSection, const Child& iStray, const Child& iLost)
{
    if (isAccepted(iStray)) {
        const std::string advice = isMisspelling(iStray.first, "button") ? "write \"button\"" : "take it out";
        mFindings.AddWarning(iSection + ": " + quote(iStray) + " is no \"button\", but is read as one, and for it " +
                             quote(iLost) + " is lost: " + advice);
    }
}

void StructureCheckC::ReportIgnored(const std::string& iSection, const Child& iStray)
{
    const std::string consequence = isMisspelling(iStray.first, "button")
                                        ? " is not \"button\": it is ignored, and there is no such button"
                                        : explainIgnored(iStray.first);
    mFindings.AddWarning(iSection + ": " + quote(iStray) + consequence);
}

void StructureCheckC::Report(bool iError, const std::string& iText)
{
    if (iError) {
        mFindings.AddError(iText);
    } else {
        mFindings.AddWarning(iText);
    }
}

} // namespace

void checkStructure(const ThemeFileC& iFile, FindingsC& ioFindings)
{
    StructureCheckC(iFile, ioFindings).Run();
}

} // namespace PEBBLETON
