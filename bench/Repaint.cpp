#include "Repaint.h"

#include <cstddef>
#include <cstring>

#include "Log.h"

namespace PEBBLETON
{

RepaintC::RepaintC(std::uint32_t iWidth, std::uint32_t iHeight)
    : mDirectfb(nullptr)
    , mPrimarySurface(nullptr)
    , mSkinSurface(nullptr)
    , mBytesPerPixel(0)
    , mWidget(0, {0, 0, iWidth, iHeight})
    , mPainter(nullptr)
{
    mArea.x = 0;
    mArea.y = 0;
    mArea.w = static_cast<int>(iWidth);
    mArea.h = static_cast<int>(iHeight);

    DIRECTFB_CHECK(DirectFBInit(nullptr, nullptr));
    DIRECTFB_CHECK(DirectFBCreate(&mDirectfb));
    DIRECTFB_CHECK(mDirectfb->SetCooperativeLevel(mDirectfb, DFSCL_FULLSCREEN));
    DFBSurfaceDescription sdsc = {};
    sdsc.flags = DSDESC_CAPS;
    sdsc.caps = DSCAPS_PRIMARY;
    DIRECTFB_CHECK(mDirectfb->CreateSurface(mDirectfb, &sdsc, &mPrimarySurface));

    DFBSurfacePixelFormat pixelFormat = DSPF_UNKNOWN;
    DIRECTFB_CHECK(mPrimarySurface->GetPixelFormat(mPrimarySurface, &pixelFormat));
    mBytesPerPixel = static_cast<int>(DFB_BYTES_PER_PIXEL(pixelFormat));

    sdsc.flags = static_cast<DFBSurfaceDescriptionFlags>(DSDESC_WIDTH | DSDESC_HEIGHT);
    DIRECTFB_CHECK(mPrimarySurface->GetSize(mPrimarySurface, &sdsc.width, &sdsc.height));
    DIRECTFB_CHECK(mDirectfb->CreateSurface(mDirectfb, &sdsc, &mSkinSurface));
    DIRECTFB_CHECK(mSkinSurface->Clear(mSkinSurface, 0x10, 0x20, 0x30, 0xff));

    mPixels.resize(GetByteCount());
    mCopy.resize(GetByteCount());
    mPainter = new DirectfbPainterC(*mPrimarySurface, *mSkinSurface, *mSkinSurface);
}

RepaintC::~RepaintC()
{
    delete mPainter;
    mSkinSurface->Release(mSkinSurface);
    mPrimarySurface->Release(mPrimarySurface);
    mDirectfb->Release(mDirectfb);
}

int RepaintC::GetBitsPerPixel() const
{
    return mBytesPerPixel * 8;
}

std::size_t RepaintC::GetByteCount() const
{
    return static_cast<std::size_t>(mBytesPerPixel) * mWidget.GetRectangle().width * mWidget.GetRectangle().height;
}

void RepaintC::ByPainter()
{
    mPainter->Paint(mWidget);
}

void RepaintC::ByBareCalls()
{
    ReadWriteFlip(mPixels.data());
}

void RepaintC::ByBareCallsAnew()
{
    DFBSurfacePixelFormat pixelFormat = DSPF_UNKNOWN;
    DIRECTFB_CHECK(mPrimarySurface->GetPixelFormat(mPrimarySurface, &pixelFormat));
    const std::size_t rowSize = DFB_BYTES_PER_PIXEL(pixelFormat) * static_cast<std::size_t>(mArea.w);
    std::vector<std::uint8_t> pixels(rowSize * static_cast<std::size_t>(mArea.h));
    ReadWriteFlip(pixels.data());
}

void RepaintC::ByMemcpy()
{
    std::memcpy(mCopy.data(), mPixels.data(), mPixels.size());
}

void RepaintC::ReadWriteFlip(std::uint8_t* ioPixels)
{
    const int pitch = mBytesPerPixel * mArea.w;
    DIRECTFB_CHECK(mSkinSurface->Read(mSkinSurface, &mArea, ioPixels, pitch));
    DIRECTFB_CHECK(mPrimarySurface->Write(mPrimarySurface, &mArea, ioPixels, pitch));
    DIRECTFB_CHECK(mPrimarySurface->Flip(mPrimarySurface, nullptr, DSFLIP_WAITFORSYNC));
}

} // namespace PEBBLETON
