// bare-menu NORMAL PRESSED: the example menu with everything written into it.
//
// It makes the DirectFB calls that the program makes with the example theme, in the same order and with the same
// arguments, and nothing else: no options, no theme file, no log, no widgets. Built with the same flags, it is what the
// program is measured against.

#include <cstddef>
#include <cstdint>
#include <vector>

#include <directfb.h>

namespace
{

struct Button {
    int code;
    int x;
    int y;
    int width;
    int height;
};

constexpr Button buttons[] = {
    {1, 40, 140, 350, 130},
    {2, 410, 140, 350, 130},
    {3, 40, 290, 350, 130},
    {4, 410, 290, 350, 130},
};

IDirectFB* directfb;
IDirectFBSurface* primary;
IDirectFBSurface* normal;
IDirectFBSurface* pressed;
IDirectFBEventBuffer* events;

void check(DFBResult iResult)
{
    if (iResult != DFB_OK) {
        DirectFBErrorFatal("bare-menu", iResult);
    }
}

void openDisplay()
{
    check(DirectFBInit(nullptr, nullptr));
    check(DirectFBCreate(&directfb));
    check(directfb->SetCooperativeLevel(directfb, DFSCL_FULLSCREEN));
    DFBSurfaceDescription description = {};
    description.flags = DSDESC_CAPS;
    description.caps = DSCAPS_PRIMARY;
    check(directfb->CreateSurface(directfb, &description, &primary));
    check(directfb->CreateInputEventBuffer(directfb, DICAPS_ALL, DFB_FALSE, &events));
}

IDirectFBSurface* loadImage(const char* iPath)
{
    IDirectFBImageProvider* provider = nullptr;
    IDirectFBSurface* surface = nullptr;
    DFBSurfaceDescription description = {};
    check(directfb->CreateImageProvider(directfb, iPath, &provider));
    check(provider->GetSurfaceDescription(provider, &description));
    description.flags = static_cast<DFBSurfaceDescriptionFlags>(DSDESC_WIDTH | DSDESC_HEIGHT);
    check(directfb->CreateSurface(directfb, &description, &surface));
    check(provider->RenderTo(provider, surface, nullptr));
    provider->Release(provider);
    return surface;
}

void paint(const Button& iButton, IDirectFBSurface* iSkin)
{
    DFBRectangle area;
    area.x = iButton.x;
    area.y = iButton.y;
    area.w = iButton.width;
    area.h = iButton.height;
    DFBSurfacePixelFormat format = DSPF_UNKNOWN;
    check(primary->GetPixelFormat(primary, &format));
    const int pitch = static_cast<int>(DFB_BYTES_PER_PIXEL(format)) * area.w;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(pitch) * static_cast<std::size_t>(area.h));
    check(iSkin->Read(iSkin, &area, pixels.data(), pitch));
    check(primary->Write(primary, &area, pixels.data(), pitch));
    check(primary->Flip(primary, nullptr, DSFLIP_WAITFORSYNC));
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
        if (button.x <= iX && iX <= button.x + button.width && button.y <= iY && iY <= button.y + button.height) {
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

void closeDisplay()
{
    primary->Release(primary);
    normal->Release(normal);
    pressed->Release(pressed);
    events->Release(events);
    directfb->Release(directfb);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        return -1;
    }
    openDisplay();
    showMenu(argv[1], argv[2]);
    const int code = waitForTouch();
    closeDisplay();
    return code;
}
