// bare-menu NORMAL PRESSED: the example menu with everything written into it.
//
// It makes the DirectFB calls that the program makes with the example theme, in the same order and with the same
// arguments, and nothing else: no options, no theme file, no log, no widgets. Built with the same flags, it is what the
// program is measured against.

#include <directfb.h>

#include "BareCalls.h"

namespace
{

using namespace PEBBLETON;

struct Button {
    int code;
    int x;
    int y;
};

constexpr Button buttons[] = {{1, 40, 140}, {2, 410, 140}, {3, 40, 290}, {4, 410, 290}};
constexpr int width = 350;
constexpr int height = 130;

IDirectFB* directfb;
IDirectFBSurface* primary;
IDirectFBSurface* normal;
IDirectFBSurface* pressed;
IDirectFBEventBuffer* events;

IDirectFBSurface* loadImage(const char* iPath)
{
    IDirectFBImageProvider* provider = nullptr;
    DFBSurfaceDescription description = {};
    check(directfb->CreateImageProvider(directfb, iPath, &provider));
    check(provider->GetSurfaceDescription(provider, &description));
    IDirectFBSurface* surface = makeSurface(directfb, description);
    check(provider->RenderTo(provider, surface, nullptr));
    provider->Release(provider);
    return surface;
}

void paint(const Button& iButton, IDirectFBSurface* iSkin)
{
    copyAnew({iButton.x, iButton.y, width, height}, iSkin, primary);
}

void showMenu(const char* iNormal, const char* iPressed)
{
    normal = loadImage(iNormal);
    pressed = loadImage(iPressed);
    check(primary->Blit(primary, normal, nullptr, 0, 0));
    check(primary->Flip(primary, nullptr, DSFLIP_WAITFORSYNC));
    check(events->Reset(events));
    for (const Button& button : buttons) {
        paint(button, normal);
    }
}

const Button* buttonAt(int iX, int iY)
{
    for (const Button& button : buttons) {
        if (button.x <= iX && iX <= button.x + width && button.y <= iY && iY <= button.y + height) {
            return &button;
        }
    }
    return nullptr;
}

// Until a button is pressed and released; a finger that slides off is not provided for.
int waitForTouch()
{
    int x = 0;
    int y = 0;
    const Button* touched = nullptr;
    for (;;) {
        DFBEvent event = {};
        check(events->WaitForEvent(events));
        check(events->GetEvent(events, &event));
        if (event.input.type == DIET_AXISMOTION) {
            (event.input.axis == DIAI_X ? x : y) = event.input.axisabs;
        } else if (event.input.type == DIET_BUTTONPRESS) {
            touched = buttonAt(x, y);
            if (touched != nullptr) {
                paint(*touched, pressed);
            }
        } else if (event.input.type == DIET_BUTTONRELEASE && touched != nullptr) {
            paint(*touched, normal);
            return touched->code;
        }
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        return -1;
    }
    openDisplay(directfb, primary);
    check(directfb->CreateInputEventBuffer(directfb, DICAPS_ALL, DFB_FALSE, &events));
    showMenu(argv[1], argv[2]);
    const int code = waitForTouch();
    primary->Release(primary);
    normal->Release(normal);
    pressed->Release(pressed);
    events->Release(events);
    directfb->Release(directfb);
    return code;
}
