#ifndef PEBBLETON_TESTS_FAKE_H
#define PEBBLETON_TESTS_FAKE_H

#include <cstdint>
#include <deque>
#include <sstream>
#include <string>
#include <vector>

#include <directfb.h>
#include <gmock/gmock.h>

// What a test throws out of a wait when the inputs it prepared are used up.
struct OutOfInput
{
};

// What DirectFBErrorFatal does instead of ending the process.
struct Fatal
{
    int status;
};

// One input as DirectFB delivers it; `value` is the position of an axis motion.
struct Input
{
    DFBInputEventType type;
    DFBInputDeviceAxisIdentifier axis = DIAI_X;
    int value = 0;
    std::int64_t after = 0; // nanoseconds that pass before it arrives
};

// Stands in for DirectFB, the system log and the monotonic clock, whose functions it defines for the test
// program. Every call leaves one line in `trace`, in order, and any call to DirectFB can be made to fail.
struct Fake
{
    std::vector<std::string> trace;
    std::string failing;            // the calls to DirectFB whose line starts so fail
    int failAt = -1;                // this one fails, counted from 0
    DFBResult result = DFB_FAILURE; // with this
    bool withoutProvider = false;   // CreateImageProvider succeeds with nothing
    DFBSurfacePixelFormat format = DSPF_RGB32;
    std::deque<Input> inputs;
    std::int64_t now = 0;

    int calls = 0;
    int surfaces = 0;
    bool over = false; // a fatal failure was reported: nothing counts any more

    Fake();

    void note(const std::string& iLine);

    // Notes a call to DirectFB and tells how it ends.
    template <typename... Parts>
    DFBResult call(const Parts&... iParts)
    {
        std::ostringstream line;
        (line << ... << iParts);
        return end(line.str());
    }

    // The trace since the last call of this function.
    std::vector<std::string> take();

private:
    DFBResult end(const std::string& iCall);
};

extern Fake fake;

extern IDirectFB fakeDirectfb;
extern IDirectFBSurface fakeSurfaces[3]; // primary, normal, pressed
extern IDirectFBEventBuffer fakeEventBuffer;

// Gives each test a new fake.
class FakeTest : public testing::Test
{
protected:
    FakeTest()
    {
        fake = Fake();
    }
};

// A file with this text, gone with the object.
struct TextFile
{
    explicit TextFile(const std::string& iText);
    ~TextFile();
    std::string path;
};

#endif
