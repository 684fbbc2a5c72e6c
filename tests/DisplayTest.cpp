#include "DirectfbEventWaiter.h"
#include "DirectfbPainter.h"
#include "FakeTest.h"
#include "LongPressButton.h"
#include "Viewer.h"

using namespace PEBBLETON;
using testing::ElementsAre;

namespace
{

using DisplayTest = FakeTest;

TEST_F(DisplayTest, CopiesOnlyWhatFitsABuffer)
{
    constexpr std::uint32_t half = 0x80000000;
    const struct {
        DFBSurfacePixelFormat format;
        Rectangle rectangle;
        const char* copied; // empty: nothing is read, written or flipped
    } cases[] = {
        {DSPF_RGB32, {5, 6, 100, 50}, "5,6 100x50 pitch 400"},
        {DSPF_RGB16, {5, 6, 100, 50}, "5,6 100x50 pitch 200"},
        {DSPF_LUT8, {half - 2, half - 2, 1, 1}, "2147483646,2147483646 1x1 pitch 1"},
        {DSPF_LUT8, {half - 1, 0, 1, 1}, ""}, // the far edge is 2^31
        {DSPF_LUT8, {0, half - 1, 1, 1}, ""},
        {DSPF_RGB32, {5, 6, 0, 50}, ""},
        {DSPF_RGB32, {5, 6, 50, 0}, ""},
        {DSPF_LUT1, {5, 6, 50, 50}, ""}, // less than a byte a pixel
        // Left of the screen, and above it: for DirectFB to refuse.
        {DSPF_RGB32, {0U - 5, 10, 100, 50}, "-5,10 100x50 pitch 400"},
        {DSPF_RGB32, {10, 0U - 5, 100, 50}, "10,-5 100x50 pitch 400"},
        {DSPF_LUT8, {half, half, 1, 1}, "-2147483648,-2147483648 1x1 pitch 1"},
        {DSPF_LUT8, {0, 0, 70000, 1}, "0,0 70000x1 pitch 70000"},
        {DSPF_LUT8, {0, 0, 1, 70000}, "0,0 1x70000 pitch 1"},
        {DSPF_LUT8, {half - 2, 0, 1, 2}, "2147483646,0 1x2 pitch 1"}, // the far edges are not the other's
        {DSPF_LUT8, {0, half - 2, 2, 1}, "0,2147483646 2x1 pitch 2"},
        {DSPF_RGB32, {0, 0, half, 1}, ""},
        {DSPF_RGB32, {0, 0, 1, half}, ""},
        {DSPF_RGB32, {0, 0, half, half}, ""},         // the signs cancel out
        {DSPF_RGB32, {0, 0, 0x20000000, 1}, ""},      // the pitch is 2^31
        {DSPF_RGB32, {0, 0, half - 1, half - 1}, ""}, // the size does not even fit in 64 bits
        {DSPF_RGB32, {0, 0, 0x8000, 0x4000}, ""},     // the size is 2^31
        {DSPF_RGB32, {0, 0, 0x10000, 0x10000}, ""},   // the size is 0 in 32 bits
    };
    for (const auto& c : cases) {
        fake.format = c.format;
        DirectfbPainterC painter(fakeSurfaces[0], fakeSurfaces[1], fakeSurfaces[2]);
        LongPressButtonC widget(1, c.rectangle);
        for (const char skin : {'n', 'p'}) {
            painter.Paint(widget);
            const std::string shape = c.copied;
            const std::string read = (skin == 'n' ? "normal.Read " : "pressed.Read ") + shape + " zeroed";
            if (shape.empty()) {
                EXPECT_THAT(fake.take(), ElementsAre("primary.GetPixelFormat"));
            } else {
                EXPECT_THAT(fake.take(),
                            ElementsAre("primary.GetPixelFormat", read, "primary.Write " + shape + ' ' + skin + skin,
                                        "primary.Flip whole 5"));
            }
            widget.HandleEvent({0, 0, EventType::Press});
        }
    }
}

TEST_F(DisplayTest, TranslatesInput)
{
    const auto unset = static_cast<EventType>(77);
    const std::string unsupported = "log 7 Received an unsupported event. Type: ";
    const struct {
        Input input;
        EventType type;
        std::uint32_t x, y;
        std::vector<std::string> log = {};
    } cases[] = {
        {{DIET_BUTTONPRESS}, EventType::Press, 0, 0},
        {{DIET_AXISMOTION, DIAI_X, 120}, EventType::Move, 120, 0},
        {{DIET_AXISMOTION, DIAI_Y, 45}, EventType::Move, 120, 45},
        {{DIET_BUTTONPRESS, DIAI_Y, 7}, EventType::Press, 120, 45},
        {{DIET_AXISMOTION, DIAI_Z, 9}, EventType::Move, 120, 45},
        {{DIET_BUTTONRELEASE}, EventType::Release, 120, 45},
        {{DIET_UNKNOWN}, unset, 120, 45, {unsupported + "0\n"}},
        {{DIET_BUTTONPRESS, DIAI_X, 0, 0, DFB_TIMEOUT},
         EventType::None,
         120,
         45,
         {"log 3 Wait for event failed with " + std::to_string(DFB_TIMEOUT) + ". \n"}},
        {{DIET_BUTTONPRESS, DIAI_X, 0, 0, DFB_OK, DFB_TIMEOUT}, unset, 120, 45},
        {{DIET_AXISMOTION, DIAI_X, -1}, EventType::Move, 0xffffffff, 45},
    };
    DirectfbEventWaiterC waiter(&fakeEventBuffer);
    for (const auto& c : cases) {
        fake.inputs = {c.input};
        InputEvent event = {1, 2, unset};
        waiter.WaitEvent(event);
        EXPECT_EQ(c.type, event.type);
        EXPECT_EQ(c.x, event.x);
        EXPECT_EQ(c.y, event.y);
        EXPECT_EQ(c.log, fake.lines("log "));
        waiter.Reset(); // forgets the input, not the position
        fake.take();
    }
}

TEST_F(DisplayTest, ViewerIsUsableOnlyAfterInit)
{
    const LongPressButtonC widget(1, {0, 0, 1, 1});
    InputEvent event = {4, 5, EventType::Move};
    {
        Viewer viewer;
        fake.take();
        viewer.Paint(widget);
        viewer.WaitEvent(event);
        EXPECT_THAT(fake.take(), ElementsAre("log 3 The painter is not initialized yet. \n",
                                             "log 3 The event generator is not initialized yet. \n"));
        EXPECT_TRUE(event.x == 4 && event.y == 5 && event.type == EventType::Move);
    }
    EXPECT_THAT(fake.take(), ElementsAre("primary.Release", "buffer.Release", "directfb.Release"));

    for (const auto& [missing, loaded] : {std::pair(1U, "n"), {2U, "p"}}) {
        fake = Fake();
        fake.withoutProvider = missing;
        Viewer viewer;
        EXPECT_FALSE(viewer.Init("n", "p"));
        fake.take();
        EXPECT_TRUE(viewer.Init("n", "p"));
        EXPECT_THAT(fake.lines("directfb.CreateImageProvider"),
                    ElementsAre(std::string("directfb.CreateImageProvider ") + loaded));
        fake.take();
        EXPECT_TRUE(viewer.Init("n", "p"));
        EXPECT_THAT(fake.take(), ElementsAre("buffer.Reset"));
    }
}

} // namespace
