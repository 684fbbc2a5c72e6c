// A DirectFB that does nothing and says that all went well, so that what is measured on it is the program's own.
// It has the calls that are made until the menu stands, and those that end it.

#include <cstdlib>

#include <directfb.h>

namespace
{

IDirectFB directfb;
IDirectFBSurface surface;
IDirectFBEventBuffer eventBuffer;
IDirectFBImageProvider imageProvider;

template <typename Result, typename... Arguments>
Result succeed(Arguments... /*iArguments*/)
{
    return static_cast<Result>(0);
}

DFBResult createSurface(IDirectFB* /*iDirectfb*/, const DFBSurfaceDescription* /*iDescription*/,
                        IDirectFBSurface** ioSurface)
{
    *ioSurface = &surface;
    return DFB_OK;
}

DFBResult createEventBuffer(IDirectFB* /*iDirectfb*/, DFBInputDeviceCapabilities /*iCapabilities*/,
                            DFBBoolean /*iGlobal*/, IDirectFBEventBuffer** ioBuffer)
{
    *ioBuffer = &eventBuffer;
    return DFB_OK;
}

DFBResult createImageProvider(IDirectFB* /*iDirectfb*/, const char* /*iFile*/, IDirectFBImageProvider** ioProvider)
{
    *ioProvider = &imageProvider;
    return DFB_OK;
}

DFBResult getPixelFormat(IDirectFBSurface* /*iSurface*/, DFBSurfacePixelFormat* ioFormat)
{
    *ioFormat = DSPF_RGB16;
    return DFB_OK;
}

} // namespace

DFBResult DirectFBInit(int* /*ioCount*/, char*** /*ioArguments*/)
{
    return DFB_OK;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the header has its own way with names
DFBResult DirectFBCreate(IDirectFB** ioDirectfb)
{
    directfb.Release = succeed;
    directfb.SetCooperativeLevel = succeed;
    directfb.CreateSurface = createSurface;
    directfb.CreateInputEventBuffer = createEventBuffer;
    directfb.CreateImageProvider = createImageProvider;
    imageProvider.Release = succeed;
    imageProvider.GetSurfaceDescription = succeed;
    imageProvider.RenderTo = succeed;
    surface.Release = succeed;
    surface.GetPixelFormat = getPixelFormat;
    surface.Blit = succeed;
    surface.Read = succeed;
    surface.Write = succeed;
    surface.Flip = succeed;
    eventBuffer.Release = succeed;
    eventBuffer.Reset = succeed;
    *ioDirectfb = &directfb;
    return DFB_OK;
}

DFBResult DirectFBErrorFatal(const char* /*iCall*/, DFBResult /*iResult*/)
{
    std::abort();
}
