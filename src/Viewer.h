#ifndef PEBBLETON_VIEWER_H
#define PEBBLETON_VIEWER_H

#include <directfb.h>

#include "IEventWaiter.h"
#include "IPainter.h"

namespace PEBBLETON
{

// The display and the touch input: everything that the program holds of DirectFB.
//
// Constructing it takes the screen; Init shows the skin, and only after it can widgets be painted and events awaited. A
// DirectFB call that fails while opening the display, or while finding an image or making a surface for it, ends the
// process (DIRECTFB_CHECK), so no operation reports it. An image that cannot be decoded or shown at first leaves a
// wrong picture, and the menu goes on. The viewer holds the one reference to each DirectFB interface below and releases
// it in its destructor.
class Viewer
{
public:
    // Opens DirectFB full screen; the size and pixel format are DirectFB's choice. Draws nothing.
    Viewer();
    ~Viewer();
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    // Loads both skin images (file paths, not kept), shows the normal one at the screen's origin and discards the input
    // queued so far. True when the viewer can paint and wait; called again then, it only discards input. False:
    // DirectFB reported success and handed out nothing, so that there is no image to paint from. Called again then, it
    // loads what is missing.
    bool Init(const char* iNormalImage, const char* iPressedImage);

    // Redraws the widget's rectangle; before Init it only logs.
    void Paint(const IWidget& iWidget);

    // Blocks for the next input, see IEventWaiter; before Init it logs and returns at once with the event untouched.
    void WaitEvent(InputEvent& ioEvent);

private:
    // Does nothing when the surface is there already.
    void LoadImage(const char* iImage, IDirectFBSurface** ioSurface);
    void ShowNormalImage();

    IDirectFB* mDirectfb;
    IDirectFBSurface* mPrimarySurface;
    IDirectFBSurface* mNormalSurface;
    IDirectFBSurface* mPressedSurface;
    IDirectFBEventBuffer* mEventBuffer;
    IEventWaiter* mEventWaiter; // owned; uses the event buffer
    IPainter* mPainter;         // owned; uses the three surfaces
};

} // namespace PEBBLETON

#endif
