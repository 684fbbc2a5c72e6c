// Feeds any bytes as a theme file to the whole way from the file to the widgets.

#include "Application.h"
#include "Fake.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize)
{
    fake = Fake();
    const TextFile file(std::string(iData, iData + iSize));
    PEBBLETON::ApplicationC application(file.path.c_str());
    if (application.Init()) {
        fake.inputs = {{DIET_BUTTONPRESS}, {DIET_BUTTONRELEASE, DIAI_X, 0, 3000000000}};
        try {
            application.Run();
        } catch (const OutOfInput&) {
        }
    }
    return 0;
}
