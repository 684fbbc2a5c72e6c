#include "Application.h"
#include "ConfigHelper.h"
#include "FakeTest.h"

using namespace PEBBLETON;
using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

using MenuTest = FakeTest;
using Line = testing::Matcher<std::string>;

const std::string images = "image { normal n\n pressed p }\n";

Line noNode(const std::string& iPath)
{
    return AllOf(StartsWith("log 3 "), HasSubstr("Dynamic exception type: "),
                 testing::EndsWith("std::exception::what: No such node (" + iPath + ")\n"));
}

TEST_F(MenuTest, ReadsEntries)
{
    std::uint32_t code = 0;
    Rectangle area = {};
    for (const char* entry :
         {"1:10:20:300:40", " 1: 10:\t20: 300: 40", "01:010:020:0300:040:99", "+1:10:20:300:40px"}) {
        ASSERT_TRUE(ReadButtonEntry(entry, code, area)) << entry;
        EXPECT_EQ(1u, code);
        EXPECT_THAT((std::vector{area.x, area.y, area.width, area.height}), ElementsAre(10, 20, 300, 40));
        code = 0;
        area = {};
    }
    ASSERT_TRUE(ReadButtonEntry("4294967295:4294967295:70000:70000:4294967295", code, area));
    EXPECT_THAT((std::vector{code, area.x, area.y, area.width, area.height}),
                ElementsAre(4294967295, 4294967295, 70000, 70000, 4294967295));
    ASSERT_TRUE(ReadButtonEntry("70000:70000:4294967295:4294967295:70000", code, area));
    EXPECT_THAT((std::vector{code, area.x, area.y, area.width, area.height}),
                ElementsAre(70000, 70000, 4294967295, 4294967295, 70000));
    for (const char* entry :
         {"1 :10:20:300:40", "1:10:20:300", "1:10:20:300:", "1,10,20,300,40", "x:10:20:300:40", ""}) {
        EXPECT_FALSE(ReadButtonEntry(entry, code, area)) << entry;
    }
}

TEST_F(MenuTest, AnswersQuestionsAboutTheTheme)
{
    const TextFile file("s { button a\n other b\n button c\n Button d }\ns { button e }\n");
    ConfigHelperC config(file.path.c_str());
    ASSERT_TRUE(config.Init());
    EXPECT_EQ(2u, config.GetCount("s", "button"));
    std::vector<std::string> values(6, "-");
    EXPECT_EQ(4u, config.GetValues("s", values));
    EXPECT_THAT(values, ElementsAre("a", "b", "c", "d", "-", "-"));
    EXPECT_FALSE(config.GetValue("s.absent", values[1]));
    EXPECT_EQ(0u, config.GetValues("absent", values));
    EXPECT_EQ("b", values[1]);
    EXPECT_THAT(fake.take(), ElementsAre(noNode("s.absent"), noNode("absent")));
}

TEST_F(MenuTest, SaysWhatIsWrongWithATheme)
{
    const auto unreadable = [](const char* iWhat) {
        return AllOf(StartsWith("log 6 Error while reading ConfigHelperC file: "), HasSubstr(iWhat),
                     testing::EndsWith("\n\n"), testing::Not(testing::EndsWith("\n\n\n")));
    };
    const Line notRead = "log 3 Failed to initialize ConfigHelper\n";
    const Line noNormal = "log 3 Failed to get normal image\n";
    const Line noPressed = "log 3 Failed to get pressed image\n";
    const Line noLong = "log 3 Failed to create widget\n";
    const Line noPush = "log 3 Failed to Create widget\n";
    const Line invalid = AllOf(StartsWith("log 3 Invalid configuration file: </tmp/"), testing::EndsWith("> . \n"));
    const std::vector<Line> both = {HasSubstr(" 1,2 3x4 "), HasSubstr(" 5,6 7x8 ")};
    const auto menu = [](const std::string& iPush, const std::string& iLong) {
        return images + "button_normal { " + iPush + " }\nbutton_long_press { " + iLong + " }\n";
    };
    const struct {
        std::string theme;
        bool ready;
        std::vector<Line> log;
        std::vector<Line> drawn = {};
    } cases[] = {
        {"a {", false, {unreadable("unmatched {"), notRead}},
        {"%s }", false, {unreadable("unmatched }"), notRead}},
        {"#include \"/nowhere/%s%n\"", false, {unreadable("cannot open include file /nowhere/%s%n"), notRead}},
        {"", false, {noNode("image.normal"), noNormal}},
        {"image { }\n" + images, false, {noNode("image.normal"), noNormal}},
        {"image { normal n }", false, {noNode("image.pressed"), noPressed}},
        {images, true, {noNode("button_long_press"), noNode("button_normal")}},
        {menu("", ""), true, {}},
        {menu("button 1:1:2:3:4\n button 1:5:6:7:8\n button 1:1:2", ""), false, {invalid, noPush}, both},
        {menu("button 1:1:2:3:4", "button 1:1:2:3:4\n button %"), false, {invalid, noLong}},
        {menu("button 1:1:2:3:4\n note 2:5:6:7:8\n button x", ""), true, {}, both},
    };
    for (const auto& c : cases) {
        const TextFile file(c.theme);
        fake = Fake();
        EXPECT_EQ(c.ready, ApplicationC(file.path.c_str()).Init()) << c.theme;
        EXPECT_THAT(fake.lines("log "), ElementsAreArray(c.log)) << c.theme;
        EXPECT_THAT(fake.lines("primary.Write "), ElementsAreArray(c.drawn)) << c.theme;
    }
    fake = Fake();
    EXPECT_FALSE(ApplicationC("/nowhere/%s").Init());
    EXPECT_THAT(fake.lines("log "), ElementsAre(HasSubstr("/nowhere/%s: cannot open file for reading"), notRead));
}

TEST_F(MenuTest, NeedsBothSkins)
{
    const TextFile file(images);
    for (const unsigned missing : {1U, 2U, 3U}) {
        fake = Fake();
        fake.withoutProvider = missing;
        EXPECT_FALSE(ApplicationC(file.path.c_str()).Init());
        EXPECT_THAT(fake.lines("log "), ElementsAre("log 3 Failed to initialize Viewer\n"));
        EXPECT_THAT(fake.lines("primary."), ElementsAre("primary.Release"));
    }
}

// The long-press buttons come last in the file and first in the menu.
TEST_F(MenuTest, FirstListedWins)
{
    const TextFile file(images + "button_normal { button 3:1:2:3:4\n button 4:1:2:3:4 }\n"
                                 "button_long_press { button 256:0:0:0:0\n button 8:0:0:0:0 }\n");
    const Input toX = {DIET_AXISMOTION, DIAI_X, 4};
    const Input toY = {DIET_AXISMOTION, DIAI_Y, 6};
    const Input down = {DIET_BUTTONPRESS};
    const Input up = {DIET_BUTTONRELEASE};
    const std::pair<std::deque<Input>, std::uint32_t> cases[] = {
        {{toX, toY, down, up}, 3},
        {{toX, toY, down, {DIET_BUTTONRELEASE, DIAI_X, 0, 3000000000}}, 256},
        // A key after the press is no second press, which would start the hold anew.
        {{down, {DIET_KEYPRESS, DIAI_X, 0, 1}, {DIET_BUTTONRELEASE, DIAI_X, 0, 2999999999}}, 256},
        {{toX, toY, up, down}, 0}, // nothing fires
    };
    for (const auto& [inputs, code] : cases) {
        fake = Fake();
        ApplicationC application(file.path.c_str());
        ASSERT_TRUE(application.Init());
        fake.inputs = inputs;
        try {
            EXPECT_EQ(code, application.Run());
        } catch (const OutOfInput&) {
            EXPECT_EQ(code, 0u);
        }
    }
}

} // namespace
