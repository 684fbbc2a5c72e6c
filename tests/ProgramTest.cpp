#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>

#include "Fake.h"
#include "Log.h"
#include "Options.h"

// The program's own main, built for this test under another name.
int pebbletonMain(int argc, char* argv[]);

using namespace PEBBLETON;
using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::IsEmpty;

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

// Matches the trace of a program that a checked call, worded like iText, ended: its place in the source, then
// DirectFB's report, and nothing more. Compilers number a call of two lines by the first or by the last.
testing::Matcher<const std::string&> endsAt(const std::string& iBefore, const std::string& iText)
{
    const bool paints = iText.find("Surface.") != std::string::npos;
    const std::string file = paints ? "src/DirectfbPainter.cpp" : "src/Viewer.cpp";
    std::ifstream source(PEBBLETON_SOURCE_DIR "/" + file);
    int number = 0;
    for (std::string line; std::getline(source, line);) {
        ++number;
        if (line.find("DIRECTFB_CHECK(" + iText.substr(0, 70)) != std::string::npos) {
            break;
        }
    }
    const auto ending = [&](int iLine) {
        return iBefore + "log 3 " + file + " <" + std::to_string(iLine) + ">:\n\t\nfatal " + iText + ' ' +
               std::to_string(DFB_FAILURE) + '\n';
    };
    return testing::AnyOf(ending(number), ending(number + 1));
}

class ProgramTest : public FakeTest
{
protected:
    ProgramTest()
    {
        fake.inputs = {{DIET_AXISMOTION, DIAI_X, 4},
                       {DIET_AXISMOTION, DIAI_Y, 6},
                       {DIET_BUTTONPRESS},
                       {DIET_KEYPRESS},
                       {DIET_BUTTONRELEASE}};
    }

    TextFile mTheme{"image { normal n.png\n pressed p.png }\n"
                    "button_long_press { button 9:0:0:0:0 }\nbutton_normal { button 3:1:2:3:4 }\n"};

    const std::vector<std::string> mStart = {
        "setlogmask 127",
        "openlog pebbleton 11 8",
        "log 6 Configuration file: " + mTheme.path,
    };
    // What a touch on the one push button does, from first to last.
    const std::vector<std::string> mDisplay =
        {"DirectFBInit nothing", "DirectFBCreate", "directfb.SetCooperativeLevel 1",
         "directfb.CreateSurface flags 1 caps 1 0x0", "directfb.CreateInputEventBuffer 7 global 0",
         // the skins
         "directfb.CreateImageProvider n.png", "provider.GetSurfaceDescription",
         "directfb.CreateSurface flags 6 caps 0 800x480", "provider.RenderTo normal whole", "provider.Release",
         "directfb.CreateImageProvider p.png", "provider.GetSurfaceDescription",
         "directfb.CreateSurface flags 6 caps 0 800x480", "provider.RenderTo pressed whole", "provider.Release",
         "primary.Blit normal whole 0,0", "primary.Flip whole 5", "buffer.Reset",
         // the button's first sight
         "primary.GetPixelFormat", "normal.Read 1,2 3x4 pitch 12 zeroed", "primary.Write 1,2 3x4 pitch 12 nn",
         "primary.Flip whole 5",
         // the two axes, the press, a key, the release
         "buffer.WaitForEvent", "buffer.GetEvent", "buffer.WaitForEvent", "buffer.GetEvent", "buffer.WaitForEvent",
         "buffer.GetEvent", "primary.GetPixelFormat", "pressed.Read 1,2 3x4 pitch 12 zeroed",
         "primary.Write 1,2 3x4 pitch 12 pp", "primary.Flip whole 5", "buffer.WaitForEvent", "buffer.GetEvent",
         "log 7 Received an unsupported event. Type: 1\n", "buffer.WaitForEvent", "buffer.GetEvent",
         "primary.GetPixelFormat", "normal.Read 1,2 3x4 pitch 12 zeroed", "primary.Write 1,2 3x4 pitch 12 nn",
         "primary.Flip whole 5",
         // the end
         "primary.Release", "normal.Release", "pressed.Release", "buffer.Release", "directfb.Release"};
    const std::vector<std::string> mEnd = {"log 6 Exit the Pebbleton application with : 3", "closelog"};
};

TEST_F(ProgramTest, EndsWithTheCodeOfTheButton)
{
    EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(3),
                joined(mStart) + joined(mDisplay) + joined(mEnd));
}

TEST_F(ProgramTest, EndsOrGoesOnWhenACallFails)
{
    const std::pair<const char*, const char*> guarded[] = {
        {"DirectFBInit", "DirectFBInit(nullptr, nullptr)"},
        {"DirectFBCreate", "DirectFBCreate(&mDirectfb)"},
        {"directfb.SetCooperativeLevel", "mDirectfb->SetCooperativeLevel(mDirectfb, DFSCL_FULLSCREEN)"},
        {"directfb.CreateSurface flags 1", "mDirectfb->CreateSurface(mDirectfb, &sdsc, &mPrimarySurface)"},
        {"directfb.CreateInputEventBuffer",
         "mDirectfb->CreateInputEventBuffer(mDirectfb, DICAPS_ALL, DFB_FALSE, &mEventBuffer)"},
        {"directfb.CreateImageProvider", "mDirectfb->CreateImageProvider(mDirectfb, iImage, &imageProvider)"},
        {"directfb.CreateSurface flags 6", "mDirectfb->CreateSurface(mDirectfb, &sdsc, ioSurface)"},
        {"primary.GetPixelFormat", "mPrimarySurface.GetPixelFormat(&mPrimarySurface, &pixelFormat)"},
        {"pressed.Read", "mPressedSurface.Read(&mPressedSurface, &directfbRectangle, bitmapData.data(), "
                         "bytesPerPixel * directfbRectangle.w)"},
        {"normal.Read", "mNormalSurface.Read(&mNormalSurface, &directfbRectangle, bitmapData.data(), "
                        "bytesPerPixel * directfbRectangle.w)"},
        {"primary.Write", "mPrimarySurface.Write(&mPrimarySurface, &directfbRectangle, bitmapData.data(), "
                          "bytesPerPixel * directfbRectangle.w)"},
        {"primary.Flip", "mPrimarySurface.Flip(&mPrimarySurface, nullptr, DSFLIP_WAITFORSYNC)"},
    };
    const std::map<std::string, std::vector<std::string>> repeated = {
        {"buffer.WaitForEvent",
         {"log 3 Wait for event failed with " + std::to_string(DFB_FAILURE) + ". \n", "buffer.WaitForEvent"}},
        {"buffer.GetEvent", {"buffer.WaitForEvent", "buffer.GetEvent"}},
    };
    fake.failAt = -1;
    const auto skinShown = std::find(mDisplay.begin(), mDisplay.end(), "primary.Flip whole 5");
    for (auto call = mDisplay.begin(); call != mDisplay.end(); ++call) {
        if (call->rfind("log ", 0) == 0) {
            continue;
        }
        ++fake.failAt;
        const auto isCall = [&call](const auto& iGuarded) { return call->rfind(iGuarded.first, 0) == 0; };
        const auto fatal = std::find_if(std::begin(guarded), std::end(guarded), isCall);
        if (fatal != std::end(guarded) && call != skinShown) {
            const std::string before = joined(mStart) + joined({mDisplay.begin(), call + 1});
            EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(DFB_FAILURE & 0xff),
                        endsAt(before, fatal->second));
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
        EXPECT_EXIT(run({"pebbleton", "-c", mTheme.path}), ExitedWithCode(3),
                    joined(mStart) + joined(display) + joined(mEnd));
    }
    EXPECT_EQ(44, fake.failAt);
}

TEST_F(ProgramTest, EndsInOrder)
{
    const auto start = [](const std::string& iLog) { return "setlogmask 127\nopenlog pebbleton 11 8\n" + iLog; };
    const std::string failed = "log 6 Exit the Pebbleton application with : -1\ncloselog\n";
    const std::string closed = "primary.Release\nbuffer.Release\ndirectfb.Release\n";
    EXPECT_EXIT(run({"pebbleton", "-h"}), ExitedWithCode(255), start(failed));
    EXPECT_EXIT(run({"pebbleton", "--foo"}), ExitedWithCode(255),
                AllOf(testing::StartsWith(start("log 6 ")), testing::EndsWith("\n\n" + failed),
                      testing::Not(HasSubstr("DirectFB"))));
    EXPECT_EXIT(run({"pebbleton", "-c", ""}), ExitedWithCode(255),
                testing::EndsWith("log 3 No skin file\n\nlog 3 Initialize the pebbleton instance failed. \n\n" +
                                  closed + failed));
    const TextFile theme("image { normal n\n pressed p }\nbutton_normal { button 258:1:2:3:4 }");
    EXPECT_EXIT(run({"pebbleton", "-c", theme.path}), ExitedWithCode(2),
                testing::EndsWith("directfb.Release\nlog 6 Exit the Pebbleton application with : 258\ncloselog\n"));
}

TEST_F(ProgramTest, FindsTheTheme)
{
    const std::string standard = "/usr/lib/quillfen/theme/main_menu.conf";
    const struct
    {
        std::vector<const char*> arguments;
        const char* variable;
        const char* value;
        std::string path; // "-": rejected with a message that holds `says`, or silent when that is empty
        std::string says;
    } cases[] = {
        {{}, "PEBBLETON_", "/b", standard, ""},
        {{"menu"}, "pebbleton_configuration", "/b", standard, ""},
        {{"-c", "/%s"}, "PEBBLETON_CONFIGURATION", "/b", "/%s", ""},
        {{"-c/a"}, "PEBBLETON_HELP", "1", "/a", ""},
        {{"--configuration", "/a"}, "OTHER", "", "/a", ""},
        {{"--configuration=/a"}, "OTHER", "", "/a", ""},
        {{"--conf", "/a"}, "OTHER", "", "/a", ""},
        {{}, "PEBBLETON_CONFIGURATION", "/b", "/b", ""},
        {{}, "PEBBLETON_Configuration", "/b", "/b", ""},
        {{}, "PEBBLETON_CONFIGURATION", "", "", ""},
        {{}, "PEBBLETON_THEME", "x", "-", "unrecognised option"},
        {{}, "PEBBLETON_C", "x", "-", "unrecognised option"},
        {{"-h"}, "PEBBLETON_THEME", "x", "-", ""},
        {{"--help", "-c", "/a"}, "OTHER", "", "-", ""},
        {{"--help", "--%s%n"}, "OTHER", "", "-", "unrecognised option '--%s%n'"},
        {{"--help=x"}, "OTHER", "", "-", "option '--help' does not take any arguments"},
        {{"-c"}, "OTHER", "", "-", "the required argument for option '--configuration' is missing"},
        {{"-c", "/a", "-c", "/b"}, "OTHER", "", "-", "option '--configuration' cannot be specified more than once"},
        {{"--CONF", "/a"}, "OTHER", "", "-", "unrecognised option '--CONF'"},
    };
    for (const auto& c : cases) {
        std::vector<const char*> argv = {"--pebbleton"};
        argv.insert(argv.end(), c.arguments.begin(), c.arguments.end());
        std::string path = "-";
        setenv(c.variable, c.value, 1);
        testing::internal::CaptureStdout();
        EXPECT_EQ(c.path != "-", ParseOptions(static_cast<int>(argv.size()), argv.data(), path)) << c.says;
        const std::string output = testing::internal::GetCapturedStdout();
        unsetenv(c.variable);
        EXPECT_EQ(c.path, path);
        if (c.path != "-") {
            EXPECT_THAT(fake.take(), ElementsAre("log 6 Configuration file: " + c.path));
        } else if (c.says.empty()) {
            EXPECT_EQ("Allowed options:\n"
                      "  -h [ --help ]                         Print help message\n"
                      "  -c [ --configuration ] arg (=" +
                          standard +
                          ")\n"
                          "                                        Quillfen configuration file.\n\n",
                      output);
            EXPECT_THAT(fake.take(), IsEmpty());
        } else {
            EXPECT_THAT(fake.take(), ElementsAre(AllOf(testing::StartsWith("log 6 "),
                                                       HasSubstr("std::exception::what: " + c.says))));
        }
        EXPECT_EQ(c.path == "-" && c.says.empty(), !output.empty());
    }
}

TEST_F(ProgramTest, Logs)
{
    SetLogLevel(0);
    SetLogLevel(14);
    Log(LOG_DEBUG, "%s of %d \n", "text", 5);
    EXPECT_THAT(fake.take(), ElementsAre("setlogmask 1", "setlogmask 127", "log 7 text of 5 \n"));
}

} // namespace
