#ifndef PEBBLETON_ENTRY_CHECK_H
#define PEBBLETON_ENTRY_CHECK_H

#include <string>
#include <vector>

#include "Findings.h"
#include "Theme.h"
#include "ThemeFile.h"

namespace PEBBLETON
{

// Looks at the five numbers of each entry: whether the menu takes them for what they seem to say, and whether whoever
// reads the exit status can tell the codes apart.
class EntryCheckC
{
public:
    // All must outlive the check.
    EntryCheckC(const ThemeFileC& iFile, const ThemeC& iTheme, FindingsC& ioFindings);

    void Run();

private:
    void CheckSection(const std::vector<Entry>& iEntries);
    void CheckRefused(const Entry& iEntry);
    void CheckNumbers(const Entry& iEntry);
    void CheckCode(const Entry& iEntry);
    void CheckCodesDiffer();

    const ThemeFileC& mFile;
    const ThemeC& mTheme;
    FindingsC& mFindings;
};

} // namespace PEBBLETON

#endif
