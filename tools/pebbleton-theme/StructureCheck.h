#ifndef PEBBLETON_STRUCTURE_CHECK_H
#define PEBBLETON_STRUCTURE_CHECK_H

namespace PEBBLETON
{

class FindingsC;
class ThemeFileC;

// Looks for names that the menu misses, does not know, or reads as something else. iFile is loaded.
void checkStructure(const ThemeFileC& iFile, FindingsC& ioFindings);

} // namespace PEBBLETON

#endif
