#ifndef PEBBLETON_THEME_FILE_H
#define PEBBLETON_THEME_FILE_H

#include <cstddef>
#include <memory>
#include <string>

#include <boost/property_tree/ptree_fwd.hpp>

#include "Findings.h"

namespace PEBBLETON
{

// The theme file as text and as the tree that the menu's own reader makes of it.
//
// A byte order mark is reported and then left out, unless it stands in a file that this one includes, so that what else
// is wrong comes to light as well.
class ThemeFileC
{
public:
    explicit ThemeFileC(std::string iFileName);
    ~ThemeFileC();
    ThemeFileC(const ThemeFileC&) = delete;
    ThemeFileC& operator=(const ThemeFileC&) = delete;

    // Reads the file, once, so that it may be a pipe. False: there is nothing to be read from it, as a finding says.
    bool Load(FindingsC& ioFindings);

    // The file as the user named it.
    const std::string& GetName() const;

    // The name at the start that the menu does not find, for the byte order mark before it; empty: none.
    const std::string& GetHiddenName() const;

    const boost::property_tree::ptree& GetTree() const;

    // A path at which the text can be read, as long as this object lives, by whoever takes a path.
    std::string GetTextPath() const;

    // Whether the value iValue is torn: followed on the same line by a word that begins with iName, as the rest of a
    // value with a blank in it is. ioWhole gets the value as it was meant.
    bool FindTornValue(const std::string& iValue, const std::string& iName, std::string& ioWhole) const;

private:
    bool ReadText(FindingsC& ioFindings);
    bool CheckEncoding(FindingsC& ioFindings);
    bool Parse(FindingsC& ioFindings);
    void CheckNames(FindingsC& ioFindings);
    void KeepCopy();

    std::string mFileName;
    std::string mText;
    std::string mHiddenName;
    std::unique_ptr<boost::property_tree::ptree> mTree; // a pointer keeps the tree's large header out of this one
    int mCopy;                                          // a nameless file with the text; -1: none
};

} // namespace PEBBLETON

#endif
