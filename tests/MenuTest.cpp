#include "Application.h"
#include "ConfigHelper.h"
#include "Fake.h"

using namespace PEBBLETON;
using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Matcher;
using testing::StartsWith;

namespace
{

const std::string images = "image\n{\nnormal n.png\npressed \"p %n.png\"\n}\n";

Matcher<std::string> noNode(const std::string& iPath)
{
    return AllOf(StartsWith("log 3 "), HasSubstr("Dynamic exception type: "),
                 HasSubstr("std::exception::what: No such node (" + iPath + ")\n"));
}

// The lines of the trace that tell of the log, the images and the first sight of a button.
std::vector<std::string> story()
{
    std::vector<std::string> lines;
    for (const std::string& line : fake.take()) {
        for (const char* kind : {"log ", "directfb.CreateImageProvider ", "primary.Write "}) {
            if (line.rfind(kind, 0) == 0) {
                lines.push_back(line);
            }
        }
    }
    return lines;
}

using MenuTest = FakeTest;

TEST_F(MenuTest, ReadsEntries)
{
    const struct
    {
        const char* entry;
        bool valid;
    } cases[] = {
        {"1:10:20:300:40", true},
        {" 1: 10:\t20: 300: 40", true},
        {"1:10:20:300:40:99", true},
        {"1:10:20:300:40px", true},
        {"+1:10:20:300:40", true},
        {"1 :10:20:300:40", false},
        {"1:10:20:300", false},
        {"1:10:20:300:", false},
        {"1,10,20,300,40", false},
        {"one:10:20:300:40", false},
        {"", false},
    };
    for (const auto& c : cases) {
        std::uint32_t code = 0;
        Rectangle rectangle = {};
        ASSERT_EQ(c.valid, ReadButtonEntry(c.entry, code, rectangle)) << c.entry;
        if (c.valid) {
            EXPECT_EQ(1u, code);
            EXPECT_EQ(10u, rectangle.x);
            EXPECT_EQ(20u, rectangle.y);
            EXPECT_EQ(300u, rectangle.width);
            EXPECT_EQ(40u, rectangle.height);
        }
    }
}

TEST_F(MenuTest, AnswersQuestionsAboutTheTheme)
{
    const TextFile file("s { button a\n other b\n button c\n Button d }\ns { button e }\nplain x\nempty { }\n");
    ConfigHelperC config(file.path.c_str());
    ASSERT_TRUE(config.Init());
    std::string value = "unchanged";
    EXPECT_TRUE(config.GetValue("s.other", value));
    EXPECT_EQ("b", value);
    EXPECT_EQ(2u, config.GetCount("s", "button"));
    EXPECT_EQ(0u, config.GetCount("plain", "button"));
    EXPECT_EQ(0u, config.GetCount("empty", "button"));
    std::vector<std::string> values(2);
    EXPECT_EQ(2u, config.GetValues("s", values));
    EXPECT_THAT(values, ElementsAre("a", "b"));
    values.assign(6, "-");
    EXPECT_EQ(4u, config.GetValues("s", values));
    EXPECT_THAT(values, ElementsAre("a", "b", "c", "d", "-", "-"));
    values.clear();
    EXPECT_EQ(0u, config.GetValues("absent", values));
    EXPECT_THAT(fake.take(), testing::IsEmpty());

    values.resize(1);
    EXPECT_EQ(0u, config.GetCount("absent", "button"));
    EXPECT_EQ(0u, config.GetValues("absent", values));
    EXPECT_FALSE(config.GetValue("s.absent", value));
    EXPECT_EQ("b", value);
    EXPECT_THAT(fake.take(), ElementsAre(noNode("absent"), noNode("absent"), noNode("s.absent")));
}

TEST_F(MenuTest, SaysWhatIsWrongWithATheme)
{
    const auto unreadable = [](const char* iWhat) {
        return AllOf(StartsWith("log 6 Error while reading ConfigHelperC file: "), HasSubstr(iWhat),
                     testing::EndsWith("\n\n"));
    };
    const std::string notRead = "log 3 Failed to initialize ConfigHelper\n";
    const std::string normal = "directfb.CreateImageProvider n.png";
    const std::string pressed = "directfb.CreateImageProvider p %n.png";
    const std::string button = "primary.Write 1,2 3x4 pitch 12 nn";
    const std::string noLong = "log 3 Failed to create widget\n";
    const std::string noPush = "log 3 Failed to Create widget\n";
    struct Case
    {
        std::string theme;
        bool ready;
        std::vector<Matcher<std::string>> story; // INVALID stands for the message about the file
    };
    const std::string invalid = "INVALID";
    const Case cases[] = {
        {"a {", false, {unreadable("unmatched {"), notRead}},
        {"%s }", false, {unreadable("unmatched }"), notRead}},
        {"#include \"/nowhere/%s%n\"", false, {unreadable("cannot open include file /nowhere/%s%n"), notRead}},
        {"", false, {noNode("image.normal"), "log 3 Failed to get normal image\n"}},
        {"image { }\n" + images, false, {noNode("image.normal"), "log 3 Failed to get normal image\n"}},
        {"image { normal n }", false, {noNode("image.pressed"), "log 3 Failed to get pressed image\n"}},
        {images, true, {normal, pressed, noNode("button_long_press"), noNode("button_normal")}},
        {images + "button_normal { }\nbutton_long_press x\n", true, {normal, pressed}},
        {images + "button_normal { button 1:1:2:3:4\n button 1:1:2:3:4\n button 1:1:2 }\nbutton_long_press x\n",
         false,
         {normal, pressed, button, button, invalid, noPush}},
        {images + "button_normal { button 1:1:2:3:4 }\nbutton_long_press { button 1:1:2:3:4\n button % }\n",
         false,
         {normal, pressed, invalid, noLong}},
        {images + "button_normal { button 1:1:2:3:4\n note 2:5:6:7:8\n button x }\nbutton_long_press x\n",
         true,
         {normal, pressed, button, "primary.Write 5,6 7x8 pitch 28 nn"}},
    };
    for (Case c : cases) {
        const TextFile file(c.theme);
        fake = Fake();
        for (Matcher<std::string>& line : c.story) {
            if (line.Matches(invalid)) {
                line = "log 3 Invalid configuration file: <" + file.path + "> . \n";
            }
        }
        {
            ApplicationC application(file.path.c_str());
            EXPECT_EQ(c.ready, application.Init()) << c.theme;
        }
        EXPECT_THAT(story(), ElementsAreArray(c.story)) << c.theme;
    }
}

TEST_F(MenuTest, NeedsAFile)
{
    EXPECT_FALSE(ApplicationC("").Init());
    EXPECT_THAT(story(), ElementsAre("log 3 No skin file\n"));
    fake = Fake();
    EXPECT_FALSE(ApplicationC("/nowhere/%s").Init());
    EXPECT_THAT(story(), ElementsAre(HasSubstr("/nowhere/%s: cannot open file for reading"),
                                     "log 3 Failed to initialize ConfigHelper\n"));
}

// Push button 3 covers x 1 to 4 and y 2 to 6, button 4 the same; the long-press buttons come last in the
// file and first in the menu.
TEST_F(MenuTest, FirstListedWins)
{
    constexpr std::int64_t hold = 3000000000;
    const TextFile file(images + "button_normal { button 3:1:2:3:4\n button 4:1:2:3:4\n button 4294967295:50:50:9:9 }\n"
                                 "button_long_press { button 256:0:0:0:0\n button 8:0:0:0:0 }\n");
    const Input toX = {DIET_AXISMOTION, DIAI_X, 4};
    const Input toY = {DIET_AXISMOTION, DIAI_Y, 6};
    const Input down = {DIET_BUTTONPRESS};
    const Input up = {DIET_BUTTONRELEASE};
    const struct
    {
        std::deque<Input> inputs;
        std::uint32_t code; // 0: nothing fires
    } cases[] = {
        {{toX, toY, down, up}, 3},
        {{toX, toY, down, {DIET_BUTTONRELEASE, DIAI_X, 0, hold}}, 256},
        {{down, {DIET_BUTTONRELEASE, DIAI_X, 0, hold}}, 256},
        {{{DIET_AXISMOTION, DIAI_X, 55}, {DIET_AXISMOTION, DIAI_Y, 55}, down, up}, 4294967295},
        // A key after the press is no second press, which would start the hold anew.
        {{down, {DIET_KEYPRESS, DIAI_X, 0, 1}, {DIET_BUTTONRELEASE, DIAI_X, 0, hold - 1}}, 256},
        {{toX, toY, up, down}, 0},
        {{}, 0},
    };
    for (const auto& c : cases) {
        fake = Fake();
        ApplicationC application(file.path.c_str());
        ASSERT_TRUE(application.Init());
        fake.inputs = c.inputs;
        if (c.code == 0) {
            EXPECT_THROW(application.Run(), OutOfInput);
        } else {
            EXPECT_EQ(c.code, application.Run());
        }
    }
}

} // namespace
