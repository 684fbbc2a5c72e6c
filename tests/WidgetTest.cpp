#include "Button.h"
#include "Fake.h"
#include "LongPressButton.h"
#include "Viewer.h"

using namespace PEBBLETON;

namespace
{

using Events = std::vector<InputEvent>;

constexpr EventType none = EventType::None;
constexpr EventType press = EventType::Press;
constexpr EventType lift = EventType::Release;
constexpr EventType move = EventType::Move;
constexpr EventType unknown = static_cast<EventType>(4);

constexpr std::uint32_t farthest = 0xffffffff;
constexpr std::int64_t second = 1000000000;

using ButtonTest = FakeTest;
using LongPressButtonTest = FakeTest;

// What an event did to the push button: nothing (.), drawn from the pressed (p) or the normal skin (n), drawn from the
// normal skin and fired (F), or anything else (?).
char outcome(ButtonC& ioButton, const InputEvent& iEvent)
{
    const bool fires = ioButton.HandleEvent(iEvent);
    const std::vector<std::string> calls = fake.take();
    if (calls.empty()) {
        return fires ? '?' : '.';
    }
    const char skin = ioButton.IsPressed() ? 'p' : 'n';
    const bool painted = calls.at(2) == std::string("primary.Write 20,30 100x10 pitch 400 ") + skin + skin;
    return !painted || (fires && skin == 'p') ? '?' : fires ? 'F' : skin;
}

TEST_F(ButtonTest, FollowsATouch)
{
    // Inside is x 20 to 120 and y 30 to 40, edges included.
    const struct
    {
        Events events;
        const char* outcomes;
    } stories[] = {
        {{{50, 35, press}, {50, 35, lift}, {50, 35, lift}}, "pF."},
        {{{20, 30, press}, {120, 40, lift}}, "pF"},
        {{{120, 40, press}, {20, 30, lift}}, "pF"},
        {{{19, 35, press}, {121, 35, press}, {50, 29, press}, {50, 41, press}, {50, 35, lift}}, "....."},
        {{{50, 35, press}, {121, 35, move}, {50, 35, move}, {50, 35, lift}}, "pn.."},
        {{{50, 35, press}, {50, 41, lift}, {50, 35, lift}}, "pn."},
        {{{0, 0, press}, {50, 35, move}, {50, 35, none}, {50, 35, unknown}, {50, 35, lift}}, "....."},
        {{{50, 35, press}, {50, 35, press}, {60, 35, move}, {60, 35, none}, {60, 35, unknown}, {60, 35, lift}},
         "p....F"},
        {{{50, 35, press}, {0, 0, none}, {50, 35, press}, {0, 0, unknown}, {50, 35, press}, {0, 0, press}}, "pnpnpn"},
    };
    Viewer viewer;
    viewer.Init("n", "p");
    for (const auto& story : stories) {
        fake.take();
        ButtonC button(7, &viewer, {20, 30, 100, 10});
        EXPECT_EQ(7u, button.GetExitCode());
        EXPECT_EQ("primary.Write 20,30 100x10 pitch 400 nn", fake.take().at(2));
        std::string outcomes;
        for (const InputEvent& event : story.events) {
            outcomes += outcome(button, event);
        }
        EXPECT_EQ(story.outcomes, outcomes);
    }
}

TEST_F(ButtonTest, ComparesIn32Bits)
{
    const struct
    {
        Rectangle rectangle;
        std::uint32_t x, y;
        bool inside;
    } cases[] = {
        {{5, 6, 0, 0}, 5, 6, true},
        {{5, 6, 0, 0}, 6, 6, false},
        {{farthest, farthest, 0, 0}, farthest, farthest, true},
        {{10, 0, farthest - 10, 1}, farthest, 0, true},
        {{10, 0, farthest - 9, 1}, 10, 0, false}, // the right edge wraps around to 0
        {{10, 0, farthest - 9, 1}, 0, 0, false},
        {{0, 10, 1, farthest}, 0, 10, false}, // the bottom edge wraps around to 9
        {{0, 10, 1, farthest}, 0, 9, false},
    };
    Viewer viewer;
    for (const auto& c : cases) {
        ButtonC button(1, &viewer, c.rectangle);
        button.HandleEvent({c.x, c.y, press});
        EXPECT_EQ(c.inside, button.IsPressed()) << c.rectangle.x << ' ' << c.rectangle.y << ' ' << c.x;
    }
}

TEST_F(LongPressButtonTest, FiresAfterThreeSeconds)
{
    struct Step
    {
        EventType type;
        std::int64_t after;
    };
    const struct
    {
        std::vector<Step> steps;
        const char* outcomes; // of each step: armed (a), idle (.) or fired (F)
    } stories[] = {
        {{{press, 0}, {lift, 3 * second}, {lift, 9 * second}}, "aF."},
        {{{press, 0}, {lift, 3 * second - 1}, {lift, 9 * second}}, "a.."},
        {{{lift, 9 * second}, {press, 0}, {lift, second}, {lift, 5 * second}}, ".a.."},
        {{{press, 0}, {press, 2 * second}, {lift, 2 * second}, {press, 0}, {lift, 9 * second}}, "aa.aF"},
        {{{press, 0}, {move, second}, {none, second}, {unknown, second}, {lift, 0}}, "aaaaF"},
    };
    for (const auto& story : stories) {
        LongPressButtonC button(9, {1, 2, 3, 4});
        EXPECT_FALSE(button.IsPressed());
        EXPECT_EQ(9u, button.GetExitCode());
        std::string outcomes;
        for (const Step& step : story.steps) {
            fake.now += step.after;
            outcomes += button.HandleEvent({500, 500, step.type}) ? 'F' : button.IsPressed() ? 'a' : '.';
        }
        EXPECT_EQ(story.outcomes, outcomes);
        EXPECT_FALSE(button.IsPressed());
        EXPECT_THAT(fake.take(), testing::IsEmpty());
    }
}

} // namespace
