#ifndef PEBBLETON_TOUCH_TOUCH_PRINTER_H
#define PEBBLETON_TOUCH_TOUCH_PRINTER_H

#include "IEventSink.h"
#include "TouchTranslator.h"

namespace PEBBLETON
{

// Hands a panel's events on to a translator, and writes each touch that comes of them, with its place on the panel and
// its pixel, as a line to standard error.
class TouchPrinterC : public IEventSink
{
public:
    // ioTranslator must outlive this object.
    explicit TouchPrinterC(TouchTranslatorC& ioTranslator);

    void Handle(unsigned iType, unsigned iCode, int iValue) override;

private:
    TouchTranslatorC& mTranslator;
};

} // namespace PEBBLETON

#endif
