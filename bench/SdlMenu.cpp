// sdl-menu NORMAL.BMP PRESSED.BMP: the example menu on SDL2, as small as it gets, to stand beside the program. SDL
// itself reads no pictures but BMP.

#include <SDL.h>

namespace
{

struct Button {
    int code;
    SDL_Rect area;
};

const Button buttons[] = {
    {1, {40, 140, 350, 130}},
    {2, {410, 140, 350, 130}},
    {3, {40, 290, 350, 130}},
    {4, {410, 290, 350, 130}},
};

const Button* buttonAt(int iX, int iY)
{
    const SDL_Point point = {iX, iY};
    for (const Button& button : buttons) {
        if (SDL_PointInRect(&point, &button.area) == SDL_TRUE) {
            return &button;
        }
    }
    return nullptr;
}

void show(SDL_Window* iWindow, SDL_Surface* iSkin, const SDL_Rect* iArea)
{
    SDL_Rect place = iArea == nullptr ? SDL_Rect{0, 0, 0, 0} : *iArea;
    SDL_BlitSurface(iSkin, iArea, SDL_GetWindowSurface(iWindow), &place);
    SDL_UpdateWindowSurface(iWindow);
}

int waitForTouch(SDL_Window* iWindow, SDL_Surface* iNormal, SDL_Surface* iPressed)
{
    const Button* touched = nullptr;
    SDL_Event event;
    while (SDL_WaitEvent(&event) == 1 && event.type != SDL_QUIT) {
        if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
            show(iWindow, iNormal, nullptr);
        } else if (event.type == SDL_MOUSEBUTTONDOWN) {
            touched = buttonAt(event.button.x, event.button.y);
            if (touched != nullptr) {
                show(iWindow, iPressed, &touched->area);
            }
        } else if (event.type == SDL_MOUSEBUTTONUP && touched != nullptr) {
            show(iWindow, iNormal, &touched->area);
            if (touched == buttonAt(event.button.x, event.button.y)) {
                return touched->code;
            }
            touched = nullptr;
        }
    }
    return -1;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3 || SDL_Init(SDL_INIT_VIDEO) != 0) {
        return -1;
    }
    SDL_Window* window = SDL_CreateWindow("menu", 0, 0, 800, 480, SDL_WINDOW_BORDERLESS);
    SDL_Surface* normal = SDL_LoadBMP(argv[1]);
    SDL_Surface* pressed = SDL_LoadBMP(argv[2]);
    if (window == nullptr || normal == nullptr || pressed == nullptr) {
        return -1;
    }
    show(window, normal, nullptr);
    const int code = waitForTouch(window, normal, pressed);
    SDL_FreeSurface(normal);
    SDL_FreeSurface(pressed);
    SDL_DestroyWindow(window);
    SDL_Quit();
    return code;
}
