#include "Button.h"
#include "FakeTest.h"
#include "LongPressButton.h"
#include "Viewer.h"

using namespace PEBBLETON;

namespace
{

constexpr EventType none = EventType::None;
constexpr EventType press = EventType::Press;
constexpr EventType lift = EventType::Release;
constexpr EventType move = EventType::Move;
constexpr auto unknown = static_cast<EventType>(4);

using WidgetTest = FakeTest;

// What became of a widget by an event: fired (F), pressed (p) or neither (.).
char outcome(IWidget& ioWidget, const InputEvent& iEvent)
{
    return ioWidget.HandleEvent(iEvent) ? 'F' : ioWidget.IsPressed() ? 'p' : '.';
}

TEST_F(WidgetTest, PushButtonFollowsATouch)
{
    const Rectangle area = {20, 30, 100, 10}; // x 20 to 120 and y 30 to 40, edges included
    const std::uint32_t farthest = 0xffffffff;
    const struct {
        Rectangle rectangle;
        std::vector<InputEvent> events;
        std::string outcomes; // one for each event
        std::string drawn;    // the first letters of the skins, in order
    } stories[] = {
        {area, {{50, 35, press}, {50, 35, lift}, {50, 35, lift}}, "pF.", "npn"},
        {area, {{20, 30, press}, {120, 40, lift}, {120, 40, press}, {20, 30, lift}}, "pFpF", "npnpn"},
        {area, {{19, 35, press}, {121, 35, press}, {50, 29, press}, {50, 41, press}, {50, 35, lift}}, ".....", "n"},
        {area, {{50, 35, press}, {121, 35, move}, {50, 35, move}, {50, 35, lift}}, "p...", "npn"},
        {area, {{50, 35, press}, {50, 41, lift}, {50, 35, press}, {0, 0, press}}, "p.p.", "npnpn"},
        {area, {{0, 0, press}, {50, 35, move}, {50, 35, none}, {50, 35, unknown}, {50, 35, lift}}, ".....", "n"},
        {area, {{50, 35, press}, {50, 35, press}, {60, 35, move}, {60, 35, none}, {60, 35, lift}}, "ppppF", "npn"},
        {area, {{50, 35, press}, {50, 35, unknown}, {0, 0, none}, {50, 35, press}, {0, 0, unknown}}, "pp.p.", "npnpn"},
        {{0, 0, 10, 10}, {{0, 5, press}, {5, 0, lift}, {0, 0, press}, {0, 11, move}}, "pFp.", "npnpn"},
        {{5, 6, 0, 0}, {{5, 6, press}, {6, 6, move}, {5, 6, press}, {5, 7, move}}, "p.p.", ""},
        {{10, 0, farthest - 10, 0}, {{farthest, 0, press}, {10, 0, lift}}, "pF", ""},
        {{10, 0, farthest - 9, 0}, {{10, 0, press}, {0, 0, press}}, "..", ""}, // the right edge wraps around to 0
        {{0, 10, 0, farthest}, {{0, 10, press}, {0, 9, press}}, "..", ""},     // the bottom edge, to 9
    };
    for (const auto& story : stories) {
        fake = Fake();
        Viewer viewer;
        viewer.Init("n", "p");
        ButtonC button(7, &viewer, story.rectangle);
        std::string outcomes;
        for (const InputEvent& event : story.events) {
            outcomes += outcome(button, event);
        }
        std::string drawn;
        for (const std::string& line : fake.lines("primary.Write ")) {
            drawn += line.back();
        }
        EXPECT_EQ(story.outcomes, outcomes);
        EXPECT_EQ(story.drawn, drawn) << story.outcomes;
    }
}

TEST_F(WidgetTest, LongPressFiresAfterThreeSeconds)
{
    constexpr std::int64_t second = 1000000000;
    const struct {
        std::vector<std::pair<EventType, std::int64_t>> steps; // and the time that passes before each
        std::string outcomes;
    } stories[] = {
        {{{press, 0}, {lift, 3 * second}, {lift, 9 * second}}, "pF."},
        {{{press, 0}, {lift, 3 * second - 1}, {lift, 9 * second}}, "p.."},
        {{{lift, 9 * second}, {press, 0}, {lift, second}, {lift, 5 * second}}, ".p.."},
        {{{press, 0}, {press, 2 * second}, {lift, 2 * second}, {press, 0}, {lift, 9 * second}}, "pp.pF"},
        {{{press, 0}, {move, second}, {none, second}, {unknown, second}, {lift, 0}}, "ppppF"},
    };
    for (const auto& story : stories) {
        LongPressButtonC button(9, {1, 2, 3, 4});
        EXPECT_FALSE(button.IsPressed());
        std::string outcomes;
        for (const auto& [type, after] : story.steps) {
            fake.now += after;
            outcomes += outcome(button, {500, 500, type});
        }
        EXPECT_EQ(story.outcomes, outcomes);
        EXPECT_FALSE(button.IsPressed());
    }
    EXPECT_THAT(fake.take(), testing::IsEmpty());
}

} // namespace
