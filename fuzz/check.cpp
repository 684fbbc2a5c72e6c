// Feeds any bytes as a theme file to what the theme tool says of its text, and holds how it explains an entry against
// what the menu makes of it.

#include <cstdlib>

#include "EntryCheck.h"
#include "EntryText.h"
#include "Fake.h"
#include "LayoutCheck.h"
#include "StructureCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize)
{
    fake = Fake(); // nothing of DirectFB is called, but the menu's library names it
    const TextFile text(std::string(iData, iData + iSize));
    PEBBLETON::FindingsC findings(text.path);
    PEBBLETON::ThemeFileC file(text.path);
    if (!file.Load(findings)) {
        return 0;
    }
    const PEBBLETON::ThemeC theme(file);
    PEBBLETON::checkStructure(file, findings);
    PEBBLETON::EntryCheckC(file, theme, findings).Run();
    PEBBLETON::LayoutCheckC({PEBBLETON::Size{800, 480}, {}, {}}, findings).Run(theme.GetPushButtons());
    for (const auto& entries : {theme.GetLongPressEntries(), theme.GetPushEntries()}) {
        for (const PEBBLETON::Entry& entry : entries) {
            if (entry.accepted != (PEBBLETON::EntryTextC(entry.value).GetNumbers().size() == 5)) {
                std::abort();
            }
        }
    }
    return 0;
}
