#include <cstdio>
#include <cstdlib>
#include <map>

#include "FakeTest.h"
#include "Log.h"
#include "Options.h"

// The program's own main, built for this test under another name.
int pebbletonMain(int argc, char* argv[]);

using namespace PEBBLETON;
using testing::ElementsAre;
using testing::EndsWith;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

std::string joined(const std::vector<std::string>& iLines)
{
    std::string text;
    for (const std::string& line : iLines) {
        text += line + '\n';
    }
    return text;
}

// Runs the whole program, leaving the trace on standard error.
void run(std::vector<std::string> iArguments)
{
    std::vector<char*> argv;
    argv.reserve(iArguments.size());
    for (std::string& argument : iArguments) {
        argv.push_back(argument.data());
    }
    std::atexit([] { std::fputs(joined(fake.trace).c_str(), stderr); });
    try {
        pebbletonMain(static_cast<int>(argv.size()), argv.data());
    } catch (const Fatal& fatal) {
        std::exit(fatal.status);
    }
}

class ProgramTest : public FakeTest
{
protected:
    ProgramTest()
    {
        fake.inputs = {{DIET_AXISMOTION, DIAI_X, 4},
                       {DIET_AXISMOTION, DIAI_Y, 6},
                       {DIET_BUTTONPRESS},
                       {DIET_BUTTONRELEASE}};
    }

    TextFile mTheme{"image { normal \" n.png\"\n pressed \"\" }\n"
                    "button_long_press { button 9:0:0:0:0 }\nbutton_normal { button 3:1:2:3:4 }\n"};

    const std::string mStart =
        "setlogmask 127\nopenlog pebbleton 11 8\nlog 6 Configuration file: " + mTheme.path + '\n';
    // What a touch on the one push button does, from first to last.
    const std::vector<std::string> mDisplay =
        {"DirectFBInit nothing", "DirectFBCreate", "directfb.SetCooperativeLevel 1",
         "directfb.CreateSurface flags 1 caps 1 0x0", "directfb.CreateInputEventBuffer 7 global 0",
         // the skins
         "directfb.CreateImageProvider  n.png", "provider.GetSurfaceDescription",
         "directfb.CreateSurface flags 6 caps 0 800x480", "provider.RenderTo normal whole", "provider.Release",
         "directfb.CreateImageProvider ", "provider.GetSurfaceDescription",
         "directfb.CreateSurface flags 6 caps 0 800x480", "provider.RenderTo pressed whole", "provider.Release",
         "primary.Blit normal whole 0,0", "primary.Flip whole 5", "buffer.Reset",
         // the button's first sight
         "primary.GetPixelFormat", "normal.Read 1,2 3x4 pitch 12 zeroed", "primary.Write 1,2 3x4 pitch 12 nn",
         "primary.Flip whole 5",
         // the two axes, the press, the release
         "buffer.WaitForEvent", "buffer.GetEvent", "buffer.WaitForEvent", "buffer.GetEvent", "buffer.WaitForEvent",
         "buffer.GetEvent", "primary.GetPixelFormat", "pressed.Read 1,2 3x4 pitch 12 zeroed",
         "primary.Write 1,2 3x4 pitch 12 pp", "primary.Flip whole 5", "buffer.WaitForEvent", "buffer.GetEvent",
         "primary.GetPixelFormat", "normal.Read 1,2 3x4 pitch 12 zeroed", "primary.Write 1,2 3x4 pitch 12 nn",
         "primary.Flip whole 5",
         // the end
         "primary.Release", "normal.Release", "pressed.Release", "buffer.Release", "directfb.Release"};
    const std::string mEnd = "log 6 Exit the Pebbleton application with : 3\ncloselog\n";
};

TEST_F(ProgramTest, EndsOrGoesOnWhenACallFails)
{
    const std::string failure = std::to_string(DFB_ACCESSDENIED);
    const std::string copied = ", &directfbRectangle, bitmapData.data(), bytesPerPixel * directfbRectangle.w)";
    const std::pair<const char*, std::string> guarded[] =
        {{"DirectFBInit", "DirectFBInit(nullptr, nullptr)"},
         {"DirectFBCreate", "DirectFBCreate(&mDirectfb)"},
         {"directfb.SetCooperativeLevel", "mDirectfb->SetCooperativeLevel(mDirectfb, DFSCL_FULLSCREEN)"},
         {"directfb.CreateSurface flags 1", "mDirectfb->CreateSurface(mDirectfb, &sdsc, &mPrimarySurface)"},
         {"directfb.CreateInputEventBuffer",
          "mDirectfb->CreateInputEventBuffer(mDirectfb, DICAPS_ALL, DFB_FALSE, &mEventBuffer)"},
         {"directfb.CreateImageProvider", "mDirectfb->CreateImageProvider(mDirectfb, iImage, &imageProvider)"},
         {"directfb.CreateSurface flags 6", "mDirectfb->CreateSurface(mDirectfb, &sdsc, ioSurface)"},
         {"primary.GetPixelFormat", "mPrimarySurface.GetPixelFormat(&mPrimarySurface, &pixelFormat)"},
         {"pressed.Read", "mPressedSurface.Read(&mPressedSurface" + copied},
         {"normal.Read", "mNormalSurface.Read(&mNormalSurface" + copied},
         {"primary.Write", "mPrimarySurface.Write(&mPrimarySurface" + copied},
         {"primary.Flip", "mPrimarySurface.Flip(&mPrimarySurface, nullptr, DSFLIP_WAITFORSYNC)"}};
    const std::map<std::string, std::vector<std::string>> repeated =
        {{"buffer.WaitForEvent", {"log 3 Wait for event failed with " + failure + ". \n", "buffer.WaitForEvent"}},
         {"buffer.GetEvent", {"buffer.WaitForEvent", "buffer.GetEvent"}}};
    const auto skinShown = std::find(mDisplay.begin(), mDisplay.end(), "primary.Flip whole 5");
    EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(3), mStart + joined(mDisplay) + mEnd);
    for (auto call = mDisplay.begin(); call != mDisplay.end(); ++call) {
        ++fake.failAt;
        const auto isCall = [&call](const auto& iGuarded) { return call->rfind(iGuarded.first, 0) == 0; };
        const auto* fatal = std::find_if(std::begin(guarded), std::end(guarded), isCall);
        if (fatal != std::end(guarded) && call != skinShown) {
            EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(DFB_ACCESSDENIED & 0xff),
                        AllOf(StartsWith(mStart + joined({mDisplay.begin(), call + 1}) + "log 3 src/"),
                              EndsWith(">:\n\t\nfatal " + fatal->second + ' ' + failure + '\n')));
            continue;
        }
        std::vector<std::string> display = mDisplay;
        const auto next = display.begin() + (call - mDisplay.begin()) + 1;
        const auto again = repeated.find(*call);
        if (again != repeated.end()) {
            display.insert(next, again->second.begin(), again->second.end());
        } else if (*call == "provider.GetSurfaceDescription") {
            *next = "directfb.CreateSurface flags 6 caps 0 0x0";
        }
        EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(3), mStart + joined(display) + mEnd);
    }
    EXPECT_EQ(42, fake.failAt);
}

TEST_F(ProgramTest, EndsInOrder)
{
    const std::string start = "setlogmask 127\nopenlog pebbleton 11 8\n";
    const std::string failed = "log 6 Exit the Pebbleton application with : -1\ncloselog\n";
    EXPECT_EXIT(run({"pebbleton", "-h"}), ExitedWithCode(255), start + failed);
    EXPECT_EXIT(run({"pebbleton", "--foo"}), ExitedWithCode(255),
                AllOf(StartsWith(start + "log 6 "), EndsWith("\n\n" + failed), Not(HasSubstr("DirectFB"))));
    EXPECT_EXIT(run({"pebbleton", "-c", ""}), ExitedWithCode(255),
                EndsWith("log 3 No skin file\n\nlog 3 Initialize the pebbleton instance failed. \n\n"
                         "primary.Release\nbuffer.Release\ndirectfb.Release\n" +
                         failed));
    const TextFile theme("image { normal n\n pressed p }\nbutton_normal { button 4294967042:1:2:3:4 }");
    EXPECT_EXIT(run({"pebbleton", "-c", theme.path}), ExitedWithCode(2),
                EndsWith("directfb.Release\nlog 6 Exit the Pebbleton application with : -254\ncloselog\n"));
}

TEST_F(ProgramTest, FindsTheTheme)
{
    const std::string standard = "/usr/lib/quillfen/theme/main_menu.conf";
    const std::string longPath(1000, 'x');
    const std::string help = "Allowed options:\n"
                             "  -h [ --help ]                         Print help message\n"
                             "  -c [ --configuration ] arg (=/usr/lib/quillfen/theme/main_menu.conf)\n"
                             "                                        Quillfen configuration file.\n\n";
    const struct {
        std::vector<const char*> arguments;
        std::string path; // "-": none
        std::string says; // besides the path: what is printed, or else part of what is logged
        const char* variable = "OTHER";
        const char* value = "";
    } cases[] = {{{}, standard, "", "PEBBLETON_", "/b"},
                 {{"menu"}, standard, "", "pebbleton_configuration", "/b"},
                 {{"-c", "/%s"}, "/%s", "", "PEBBLETON_CONFIGURATION", "/b"},
                 {{"-c/a"}, "/a", "", "PEBBLETON_HELP", "1"},
                 {{"--configuration=/a"}, "/a", ""},
                 {{"--conf", "/a"}, "/a", ""},
                 {{"-c", longPath.c_str()}, longPath, ""},
                 {{"-C", "/a"}, "-", "unrecognised option '-C'"},
                 {{}, "/b", "", "PEBBLETON_CONFIGURATION", "/b"},
                 {{}, "", "", "PEBBLETON_CONFIGURATION"},
                 {{}, "-", "unrecognised option", "PEBBLETON_THEME"},
                 {{}, "-", "unrecognised option", "PEBBLETON_C"},
                 {{"-h"}, "-", help, "PEBBLETON_THEME"},
                 {{"--help", "--%s%n"}, "-", "unrecognised option '--%s%n'"},
                 {{"--help=x"}, "-", "option '--help' does not take any arguments"},
                 {{"-c"}, "-", "the required argument for option '--configuration' is missing"},
                 {{"-c", "/a", "-c", "/b"}, "-", "option '--configuration' cannot be specified more than once"}};
    for (const auto& c : cases) {
        std::vector<const char*> argv = {"--pebbleton"};
        argv.insert(argv.end(), c.arguments.begin(), c.arguments.end());
        std::string path = "-";
        setenv(c.variable, c.value, 1);
        testing::internal::CaptureStdout();
        EXPECT_EQ(c.path != "-", ParseOptions(static_cast<int>(argv.size()), argv.data(), path)) << c.says;
        unsetenv(c.variable);
        EXPECT_EQ(c.path, path);
        EXPECT_EQ(c.says == help ? help : "", testing::internal::GetCapturedStdout());
        if (c.path != "-") {
            EXPECT_THAT(fake.take(), ElementsAre("log 6 Configuration file: " + c.path));
        } else if (c.says == help) {
            EXPECT_THAT(fake.take(), testing::IsEmpty());
        } else {
            const std::string what = "std::exception::what: " + c.says;
            EXPECT_THAT(fake.take(), ElementsAre(AllOf(StartsWith("log 6 "), HasSubstr(what), Not(EndsWith("\n\n")))));
        }
    }
}

TEST_F(ProgramTest, Logs)
{
    SetLogLevel(0);
    SetLogLevel(14);
    Log(LOG_DEBUG, "%s of %d \n", "text", 5);
    EXPECT_THAT(fake.take(), ElementsAre("setlogmask 1", "setlogmask 127", "log 7 text of 5 \n"));
    fake.failAt = 0;
    EXPECT_THROW(DIRECTFB_CHECK(fake.call(nullptr, "call")), Fatal);
    const std::string place = "tests/ProgramTest.cpp <" + std::to_string(__LINE__ - 1) + ">:\n\t";
    const std::string report = "fatal fake.call(nullptr, \"call\") " + std::to_string(DFB_ACCESSDENIED);
    EXPECT_THAT(fake.take(), ElementsAre("call", "log 3 " + place, report));
}

} // namespace
