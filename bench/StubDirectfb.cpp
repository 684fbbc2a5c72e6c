// A DirectFB that does nothing and says that all went well, so that what is measured on it is the program's own: the
// calls that are made until the menu stands, and those that end it. The tests' fake cannot serve: it notes each call,
// which makes a theme of push buttons take ten times as long.

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
    directfb.CreateSurface = [](auto*, auto*, auto** ioSurface) { return *ioSurface = &surface, DFB_OK; };
    directfb.CreateInputEventBuffer = [](auto*, auto, auto, auto** ioBuffer) {
        return *ioBuffer = &eventBuffer, DFB_OK;
    };
    directfb.CreateImageProvider = [](auto*, auto*, auto** ioProvider) { return *ioProvider = &imageProvider, DFB_OK; };
    imageProvider.Release = succeed;
    imageProvider.GetSurfaceDescription = succeed;
    imageProvider.RenderTo = succeed;
    surface.Release = succeed;
    surface.GetPixelFormat = [](auto*, auto* ioFormat) { return *ioFormat = DSPF_RGB16, DFB_OK; };
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
