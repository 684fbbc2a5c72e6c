#include "SkinDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace PEBBLETON
{

namespace
{

bool isOpaque(std::uint32_t iPixel)
{
    return iPixel >> 24U == 0xFFU;
}

} // namespace

SkinDecoderC::SkinDecoderC() : mDirectfb(nullptr), mProvider(nullptr)
{
}

SkinDecoderC::Result SkinDecoderC::Decode(const std::string& iPath)
{
    Result result = {Step::Start, Start(), DFB_OK, 0, false, 0, 0};
    if (result.result != DFB_OK) {
        return result;
    }
    result.step = Step::Open;
    result.result = mDirectfb->CreateImageProvider(mDirectfb, iPath.c_str(), &mProvider);
    if (result.result != DFB_OK) {
        return result;
    }
    DFBSurfaceDescription description = {};
    mProvider->GetSurfaceDescription(mProvider, &description);
    result.width = static_cast<std::uint32_t>(description.width);
    result.height = static_cast<std::uint32_t>(description.height);

    result.step = Step::Allocate;
    result.result = Render(DSPF_RGB32, result, mPixels);
    if (result.result == DFB_OK) {
        result.step = Step::Done;
        Judge(result);
    }
    return result;
}

const std::vector<std::uint32_t>& SkinDecoderC::GetPixels() const
{
    return mPixels;
}

DFBResult SkinDecoderC::Start()
{
    unsetenv("DFBARGS");
    setenv("HOME", "/nonexistent", 1);
    // After what /etc/directfbrc says, so that no device is touched.
    char program[] = "pebbleton-theme";
    char settings[] =
        "--dfb:system=dummy,mode=8x8,pixelformat=RGB32,disable-module=linux_input,no-sighandler,quiet,no-banner";
    char* words[] = {program, settings, nullptr};
    char** argv = words;
    int argc = 2;
    const DFBResult result = DirectFBInit(&argc, &argv);
    return result == DFB_OK ? DirectFBCreate(&mDirectfb) : result;
}

DFBResult SkinDecoderC::Render(DFBSurfacePixelFormat iFormat, Result& ioResult, std::vector<std::uint32_t>& ioPixels)
{
    DFBSurfaceDescription description = {};
    description.flags = static_cast<DFBSurfaceDescriptionFlags>(DSDESC_WIDTH | DSDESC_HEIGHT | DSDESC_PIXELFORMAT);
    description.width = static_cast<int>(ioResult.width);
    description.height = static_cast<int>(ioResult.height);
    description.pixelformat = iFormat;
    IDirectFBSurface* surface = nullptr;
    DFBResult result = mDirectfb->CreateSurface(mDirectfb, &description, &surface);
    if (result != DFB_OK) {
        return result;
    }
    surface->Clear(surface, 0, 0, 0, 0);
    ioResult.rendered = mProvider->RenderTo(mProvider, surface, nullptr);

    ioPixels.resize(static_cast<std::size_t>(ioResult.width) * ioResult.height);
    DFBRectangle whole;
    whole.x = 0;
    whole.y = 0;
    whole.w = description.width;
    whole.h = description.height;
    return surface->Read(surface, &whole, ioPixels.data(), static_cast<int>(sizeof(std::uint32_t)) * whole.w);
}

// An opaque picture leaves all bits of alpha set, whatever it is decoded into. Where they are not, nothing was decoded,
// or something else than the picture: a palette is taken for colours, for one.
void SkinDecoderC::Judge(Result& ioResult)
{
    DFBImageDescription image = {};
    mProvider->GetImageDescription(mProvider, &image);
    if (image.caps == DICAPS_NONE) {
        const auto odd =
            std::count_if(mPixels.begin(), mPixels.end(), [](std::uint32_t iPixel) { return !isOpaque(iPixel); });
        ioResult.odd = static_cast<std::uint32_t>(odd);
    } else {
        // Of a colour key the decoder leaves no trace in the alpha bits.
        ioResult.transparent =
            (image.caps & DICAPS_COLORKEY) != 0 || !std::all_of(mPixels.begin(), mPixels.end(), isOpaque);
    }
}

} // namespace PEBBLETON
