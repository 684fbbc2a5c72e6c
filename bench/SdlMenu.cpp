// sdl-menu NORMAL.BMP PRESSED.BMP: the example menu on SDL2, as small as it gets, to stand beside the program. SDL
// itself reads no pictures but BMP.

#include <SDL.h>

namespace
{

const SDL_Rect buttons[] = {{40, 140, 350, 130}, {410, 140, 350, 130}, {40, 290, 350, 130}, {410, 290, 350, 130}};

const SDL_Rect* buttonAt(int iX, int iY)
{
    const SDL_Point point = {iX, iY};
    for (const SDL_Rect& button : buttons) {
        if (SDL_PointInRect(&point, &button) == SDL_TRUE) {
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
    const SDL_Rect* touched = nullptr;
    SDL_Event event;
    while (SDL_WaitEvent(&event) == 1 && event.type != SDL_QUIT) {
        if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
            show(iWindow, iNormal, nullptr);
        } else if (event.type == SDL_MOUSEBUTTONDOWN) {
            touched = buttonAt(event.button.x, event.button.y);
            if (touched != nullptr) {
                show(iWindow, iPressed, touched);
            }
        } else if (event.type == SDL_MOUSEBUTTONUP && touched != nullptr) {
            show(iWindow, iNormal, touched);
            if (touched == buttonAt(event.button.x, event.button.y)) {
                return static_cast<int>(touched - buttons) + 1;
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
