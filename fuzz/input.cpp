// Feeds any input to a menu of several widgets, and after each one compares what the menu drew, whether it fired and
// with which code with a second, plain telling of how buttons behave.

#include <cstdlib>
#include <iostream>

#include <fuzzer/FuzzedDataProvider.h>

#include "Application.h"
#include "Fake.h"

namespace
{

constexpr std::uint64_t wrap = 0x100000000;

struct PushButton {
    int code;
    std::uint64_t left, top, width, height;
    bool held = false;
};

struct LongPress {
    int code;
    bool held = false;
    std::int64_t since = 0;
};

constexpr const char* theme = R"(
    image { normal n
            pressed p }
    button_long_press { button 8:0:0:1:1
                        button 9:0:0:1:1 }
    button_normal { button 1:10:10:20:20
                    button 2:30:30:10:10
                    button 3:15:15:5:5
                    button 4:50:10:0:0
                    button 5:0:0:10:10
                    button 6:40:0:4294967255:100
                    button 7:40:0:4294967256:100 })";

// The same menu. The buttons overlap, share edges, are a mere point, and reach up to and beyond the last position there
// is.
struct Model {
    LongPress longPresses[2] = {{8}, {9}};
    PushButton pushButtons[7] = {{1, 10, 10, 20, 20},       {2, 30, 30, 10, 10}, {3, 15, 15, 5, 5},
                                 {4, 50, 10, 0, 0},         {5, 0, 0, 10, 10},   {6, 40, 0, wrap - 41, 100},
                                 {7, 40, 0, wrap - 40, 100}};
    std::uint64_t x = 0;
    std::uint64_t y = 0;
    std::vector<std::string> drawn;

    static bool Covers(std::uint64_t iStart, std::uint64_t iLength, std::uint64_t iPosition)
    {
        return iStart + iLength < wrap && iPosition >= iStart && iPosition - iStart <= iLength;
    }

    void Hold(PushButton& ioButton, bool iHeld)
    {
        const bool visible = ioButton.width != 0 && ioButton.height != 0 && ioButton.width < wrap / 2;
        if (visible && ioButton.held != iHeld) {
            std::ostringstream line;
            line << "primary.Write " << ioButton.left << ',' << ioButton.top << ' ' << ioButton.width << 'x'
                 << ioButton.height << " pitch " << ioButton.width * 4 << (iHeld ? " pp" : " nn");
            drawn.push_back(line.str());
        }
        ioButton.held = iHeld;
    }

    // The code that an input fires, or 0.
    int Handle(const Input& iInput)
    {
        const bool arrived = iInput.wait == DFB_OK && iInput.get == DFB_OK;
        const bool down = arrived && iInput.type == DIET_BUTTONPRESS;
        const bool up = arrived && iInput.type == DIET_BUTTONRELEASE;
        if (arrived && iInput.type == DIET_AXISMOTION && iInput.axis != DIAI_Z) {
            (iInput.axis == DIAI_X ? x : y) = static_cast<std::uint32_t>(iInput.value);
        }
        for (LongPress& button : longPresses) {
            const bool longEnough = button.held && fake.now >= button.since + 3000000000;
            button.since = down ? fake.now : button.since;
            button.held = down || (button.held && !up);
            if (up && longEnough) {
                return button.code;
            }
        }
        for (PushButton& button : pushButtons) {
            const bool inside = Covers(button.left, button.width, x) && Covers(button.top, button.height, y);
            const bool fires = inside && up && button.held;
            Hold(button, inside && !up && (down || button.held));
            if (fires) {
                return button.code;
            }
        }
        return 0;
    }
};

Input decode(FuzzedDataProvider& ioData)
{
    Input input = {};
    input.type = ioData.PickValueInArray({DIET_AXISMOTION, DIET_AXISMOTION, DIET_BUTTONPRESS, DIET_BUTTONRELEASE,
                                          DIET_KEYPRESS, DIET_KEYRELEASE, DIET_UNKNOWN});
    input.axis = ioData.PickValueInArray({DIAI_X, DIAI_Y, DIAI_Z});
    input.value = ioData.PickValueInArray({0, 9, 10, 11, 14, 20, 21, 29, 30, 31, 39, 40, 41, 50, 100, 101, -1});
    input.after = ioData.PickValueInArray<std::int64_t>({0, 1, 1000000000, 2999999999, 3000000000});
    input.wait = ioData.ConsumeIntegral<std::uint8_t>() < 8 ? DFB_FAILURE : DFB_OK;
    input.get = ioData.ConsumeIntegral<std::uint8_t>() < 8 ? DFB_FAILURE : DFB_OK;
    return input;
}

int fire(PEBBLETON::ApplicationC& ioApplication)
{
    try {
        return static_cast<int>(ioApplication.Run());
    } catch (const OutOfInput&) {
        return 0;
    }
}

void tell(const char* iWho, int iCode, const std::vector<std::string>& iDrawn)
{
    std::cerr << iWho << ": code " << iCode << '\n';
    for (const std::string& line : iDrawn) {
        std::cerr << "    " << line << '\n';
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize)
{
    fake = Fake();
    Model model;
    const TextFile file(theme);
    PEBBLETON::ApplicationC application(file.path.c_str());
    if (!application.Init()) {
        std::abort();
    }
    fake.take();
    for (FuzzedDataProvider data(iData, iSize); data.remaining_bytes() != 0;) {
        fake.inputs = {decode(data)};
        const Input input = fake.inputs.front();
        const int code = fire(application);
        const int expected = model.Handle(input);
        const std::vector<std::string> drawn = fake.lines("primary.Write ");
        if (code != expected || drawn != model.drawn) {
            tell("The menu", code, drawn);
            tell("Expected", expected, model.drawn);
            std::abort();
        }
        fake.take();
        model.drawn.clear();
    }
    return 0;
}
