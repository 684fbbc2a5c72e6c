// Feeds any bytes as a theme file to the whole way from the file to the widgets.

#include "Application.h"
#include "Fake.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize)
{
    fake = Fake();
    const TextFile file(std::string(iData, iData + iSize));
    PEBBLETON::ApplicationC(file.path.c_str()).Init();
    return 0;
}
