#include "TouchPrinter.h"

#include <cstdio>

namespace PEBBLETON
{

TouchPrinterC::TouchPrinterC(TouchTranslatorC& ioTranslator) : mTranslator(ioTranslator)
{
}

void TouchPrinterC::Handle(unsigned iType, unsigned iCode, int iValue)
{
    mTranslator.Handle(iType, iCode, iValue);
    if (const auto touch = mTranslator.TakePressed()) {
        std::fprintf(stderr, "pebbleton-touch: a touch at %d,%d on the panel is pixel %d,%d\n", touch->onPanel.x,
                     touch->onPanel.y, touch->pixel.x, touch->pixel.y);
    }
}

} // namespace PEBBLETON
