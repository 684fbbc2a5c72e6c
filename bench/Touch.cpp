// A finger for a display that has none, to be preloaded into a program that uses DirectFB:
//
//     LD_PRELOAD=libtouch.so DFBARGS=system=dummy,mode=800x480 pebbleton -c ...
//
// DirectFB's headless system has no input device, and a program discards what came in before it was ready, so the touch
// has to be made when the program first waits. DirectFB's interfaces are tables of functions: DirectFBCreate is
// replaced by one that puts a function of ours in the place of CreateInputEventBuffer, and that one does the same with
// WaitForEvent. The first wait posts the four events of a touch to DirectFB's own event buffer and puts DirectFB's
// function back; from then on they travel as any others do. Any program is touched in the same way and at the same
// cost. DirectFB2 has the same functions in other places, so this is built for the one or the other.

#include <dlfcn.h>

#include <directfb.h>

namespace
{

// Inside the button "Start" of the example theme.
constexpr int touchX = 200;
constexpr int touchY = 200;

// One program has one display and one event buffer.
DFBResult (*createInputEventBuffer)(IDirectFB*, DFBInputDeviceCapabilities, DFBBoolean, IDirectFBEventBuffer**);
DFBResult (*waitForEvent)(IDirectFBEventBuffer*);

void post(IDirectFBEventBuffer* iBuffer, DFBInputEventType iType, DFBInputDeviceAxisIdentifier iAxis, int iPosition)
{
    DFBEvent event = {};
    event.input.clazz = DFEC_INPUT;
    event.input.type = iType;
    event.input.axis = iAxis;
    event.input.axisabs = iPosition;
    iBuffer->PostEvent(iBuffer, &event);
}

DFBResult touchThenWait(IDirectFBEventBuffer* iBuffer)
{
    iBuffer->WaitForEvent = waitForEvent;
    post(iBuffer, DIET_AXISMOTION, DIAI_X, touchX);
    post(iBuffer, DIET_AXISMOTION, DIAI_Y, touchY);
    post(iBuffer, DIET_BUTTONPRESS, DIAI_X, 0);
    post(iBuffer, DIET_BUTTONRELEASE, DIAI_X, 0);
    return iBuffer->WaitForEvent(iBuffer);
}

DFBResult createTouchedBuffer(IDirectFB* iDirectfb, DFBInputDeviceCapabilities iCapabilities, DFBBoolean iGlobal,
                              IDirectFBEventBuffer** ioBuffer)
{
    const DFBResult result = createInputEventBuffer(iDirectfb, iCapabilities, iGlobal, ioBuffer);
    if (result == DFB_OK) {
        waitForEvent = (*ioBuffer)->WaitForEvent;
        (*ioBuffer)->WaitForEvent = touchThenWait;
    }
    return result;
}

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the header has its own way with names
DFBResult DirectFBCreate(IDirectFB** ioDirectfb)
{
    const auto create = reinterpret_cast<decltype(&DirectFBCreate)>(dlsym(RTLD_NEXT, "DirectFBCreate"));
    const DFBResult result = create(ioDirectfb);
    if (result == DFB_OK) {
        createInputEventBuffer = (*ioDirectfb)->CreateInputEventBuffer;
        (*ioDirectfb)->CreateInputEventBuffer = createTouchedBuffer;
    }
    return result;
}
