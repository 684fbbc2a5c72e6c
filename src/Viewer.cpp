#include "Viewer.h"

#include "DirectfbEventWaiter.h"
#include "DirectfbPainter.h"
#include "Log.h"

namespace PEBBLETON
{

namespace
{

template <typename Interface>
void release(Interface* iInterface)
{
    if (iInterface != nullptr) {
        iInterface->Release(iInterface);
    }
}

} // namespace

Viewer::Viewer()
    : mDirectfb(nullptr)
    , mPrimarySurface(nullptr)
    , mNormalSurface(nullptr)
    , mPressedSurface(nullptr)
    , mEventBuffer(nullptr)
    , mEventWaiter(nullptr)
    , mPainter(nullptr)
{
    DIRECTFB_CHECK(DirectFBInit(nullptr, nullptr));
    DIRECTFB_CHECK(DirectFBCreate(&mDirectfb));
    DIRECTFB_CHECK(mDirectfb->SetCooperativeLevel(mDirectfb, DFSCL_FULLSCREEN));

    DFBSurfaceDescription sdsc = {};
    sdsc.flags = DSDESC_CAPS;
    sdsc.caps = DSCAPS_PRIMARY;
    DIRECTFB_CHECK(mDirectfb->CreateSurface(mDirectfb, &sdsc, &mPrimarySurface));

    DIRECTFB_CHECK(mDirectfb->CreateInputEventBuffer(mDirectfb, DICAPS_ALL, DFB_FALSE, &mEventBuffer));
}

// The main interface goes after everything that came from it. The waiter and the painter go last: their destructors
// touch no DirectFB interface.
Viewer::~Viewer()
{
    release(mPrimarySurface);
    release(mNormalSurface);
    release(mPressedSurface);
    release(mEventBuffer);
    release(mDirectfb);
    delete mEventWaiter;
    delete mPainter;
}

bool Viewer::Init(const char* iNormalImage, const char* iPressedImage)
{
    if (mEventWaiter == nullptr && mPainter == nullptr) {
        LoadImage(iNormalImage, &mNormalSurface);
        LoadImage(iPressedImage, &mPressedSurface);
        if (mNormalSurface == nullptr || mPressedSurface == nullptr) {
            return false;
        }
        ShowNormalImage();
        mEventWaiter = new DirectfbEventWaiterC(mEventBuffer);
        mPainter = new DirectfbPainterC(*mPrimarySurface, *mNormalSurface, *mPressedSurface);
    }
    if (mEventWaiter == nullptr || mPainter == nullptr) {
        return false;
    }
    mEventWaiter->Reset();
    return true;
}

void Viewer::Paint(const IWidget& iWidget)
{
    if (mPainter == nullptr) {
        Log(LOG_ERR, "The painter is not initialized yet. \n");
        return;
    }
    mPainter->Paint(iWidget);
}

void Viewer::WaitEvent(InputEvent& ioEvent)
{
    if (mEventWaiter == nullptr) {
        Log(LOG_ERR, "The event generator is not initialized yet. \n");
        return;
    }
    mEventWaiter->WaitEvent(ioEvent);
}

void Viewer::LoadImage(const char* iImage, IDirectFBSurface** ioSurface)
{
    if (*ioSurface != nullptr) {
        return;
    }
    IDirectFBImageProvider* imageProvider = nullptr;
    DIRECTFB_CHECK(mDirectfb->CreateImageProvider(mDirectfb, iImage, &imageProvider));
    if (imageProvider == nullptr) {
        return;
    }
    // Zeroed, so that a provider that fails to describe its image leads to a size of nothing, which DirectFB refuses,
    // and not to whatever stood on the stack.
    DFBSurfaceDescription sdsc = {};
    imageProvider->GetSurfaceDescription(imageProvider, &sdsc);
    // Of the description only the size counts: the pixel format must be the primary surface's, which DirectFB gives to
    // a surface for which none is requested.
    sdsc.flags = static_cast<DFBSurfaceDescriptionFlags>(DSDESC_WIDTH | DSDESC_HEIGHT);
    DIRECTFB_CHECK(mDirectfb->CreateSurface(mDirectfb, &sdsc, ioSurface));
    imageProvider->RenderTo(imageProvider, *ioSurface, nullptr);
    imageProvider->Release(imageProvider);
}

// A failure here is not the end: the buttons still work on whatever the screen shows.
void Viewer::ShowNormalImage()
{
    mPrimarySurface->Blit(mPrimarySurface, mNormalSurface, nullptr, 0, 0);
    mPrimarySurface->Flip(mPrimarySurface, nullptr, DSFLIP_WAITFORSYNC);
}

} // namespace PEBBLETON
