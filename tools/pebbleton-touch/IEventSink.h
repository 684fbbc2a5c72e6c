#ifndef PEBBLETON_TOUCH_I_EVENT_SINK_H
#define PEBBLETON_TOUCH_I_EVENT_SINK_H

namespace PEBBLETON
{

// Takes the events of a panel, numbered as the kernel's input layer numbers them, one by one.
class IEventSink
{
public:
    virtual ~IEventSink() = default;

    // EV_SYN, SYN_REPORT ends a report.
    virtual void Handle(unsigned iType, unsigned iCode, int iValue) = 0;
};

} // namespace PEBBLETON

#endif
