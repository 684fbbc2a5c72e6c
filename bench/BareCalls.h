#ifndef PEBBLETON_BENCH_BARE_CALLS_H
#define PEBBLETON_BENCH_BARE_CALLS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <directfb.h>

// The program's own calls of DirectFB, in its order and with its arguments, and nothing around them.
namespace PEBBLETON
{

inline void check(DFBResult iResult)
{
    if (iResult != DFB_OK) {
        DirectFBErrorFatal("bare calls", iResult);
    }
}

inline void openDisplay(IDirectFB*& ioDirectfb, IDirectFBSurface*& ioPrimary)
{
    check(DirectFBInit(nullptr, nullptr));
    check(DirectFBCreate(&ioDirectfb));
    check(ioDirectfb->SetCooperativeLevel(ioDirectfb, DFSCL_FULLSCREEN));
    DFBSurfaceDescription description = {};
    description.flags = DSDESC_CAPS;
    description.caps = DSCAPS_PRIMARY;
    check(ioDirectfb->CreateSurface(ioDirectfb, &description, &ioPrimary));
}

inline IDirectFBSurface* makeSurface(IDirectFB* iDirectfb, DFBSurfaceDescription iDescription)
{
    IDirectFBSurface* surface = nullptr;
    iDescription.flags = static_cast<DFBSurfaceDescriptionFlags>(DSDESC_WIDTH | DSDESC_HEIGHT);
    check(iDirectfb->CreateSurface(iDirectfb, &iDescription, &surface));
    return surface;
}

inline int pitchOf(const DFBRectangle& iArea, IDirectFBSurface* iPrimary)
{
    DFBSurfacePixelFormat format = DSPF_UNKNOWN;
    check(iPrimary->GetPixelFormat(iPrimary, &format));
    return static_cast<int>(DFB_BYTES_PER_PIXEL(format)) * iArea.w;
}

inline void copy(const DFBRectangle& iArea, IDirectFBSurface* iSkin, IDirectFBSurface* iPrimary, int iPitch,
                 std::uint8_t* ioPixels)
{
    check(iSkin->Read(iSkin, &iArea, ioPixels, iPitch));
    check(iPrimary->Write(iPrimary, &iArea, ioPixels, iPitch));
    check(iPrimary->Flip(iPrimary, nullptr, DSFLIP_WAITFORSYNC));
}

// With what a repaint is bound to do anew each time: it asks for the pixel format and makes a zeroed buffer.
inline void copyAnew(const DFBRectangle& iArea, IDirectFBSurface* iSkin, IDirectFBSurface* iPrimary)
{
    const int pitch = pitchOf(iArea, iPrimary);
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(pitch) * static_cast<std::size_t>(iArea.h));
    copy(iArea, iSkin, iPrimary, pitch, pixels.data());
}

} // namespace PEBBLETON

#endif
