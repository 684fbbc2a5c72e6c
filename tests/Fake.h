#ifndef PEBBLETON_TESTS_FAKE_H
#define PEBBLETON_TESTS_FAKE_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

#include <directfb.h>

// What a test throws out of a wait when the inputs it prepared are used up.
struct OutOfInput {
};

// What DirectFBErrorFatal does instead of ending the process.
struct Fatal {
    int status;
};

// One input as DirectFB delivers it; `value` is the position of an axis motion.
struct Input {
    DFBInputEventType type;
    DFBInputDeviceAxisIdentifier axis = DIAI_X;
    int value = 0;
    std::int64_t after = 0;  // nanoseconds that pass before it arrives
    DFBResult wait = DFB_OK; // how the wait for it ends
    DFBResult get = DFB_OK;  // and how taking it out of the buffer
};

// Stands in for DirectFB, the system log and the monotonic clock, whose functions it defines for the test program.
// Every call leaves one line in `trace`, in order, and any call to DirectFB can be made to fail.
struct Fake {
    std::vector<std::string> trace;
    int failAt = -1;              // the call to DirectFB that fails, counted from 0
    unsigned withoutProvider = 0; // the bits of the calls to CreateImageProvider that hand out none
    DFBSurfacePixelFormat format = DSPF_RGB32;
    std::deque<Input> inputs;
    std::int64_t now = 0;

    int calls = 0;
    int providers = 0;
    int surfaces = 0;
    bool over = false; // a fatal failure was reported: nothing counts any more

    Fake();

    void note(const std::string& iLine);

    // Notes a call to DirectFB, on this interface if any, and tells how it ends.
    template <typename... Parts>
    DFBResult call(const void* iInterface, const Parts&... iParts)
    {
        std::ostringstream line;
        line << nameOf(iInterface);
        (line << ... << iParts);
        note(line.str());
        return calls++ == failAt ? DFB_ACCESSDENIED : DFB_OK;
    }

    // The trace since the last call of this function; and those of its lines that start so.
    std::vector<std::string> take();
    std::vector<std::string> lines(const std::string& iStart) const;

    static std::string nameOf(const void* iInterface);
};

extern Fake fake;

extern IDirectFB fakeDirectfb;
extern IDirectFBSurface fakeSurfaces[3]; // primary, normal, pressed
extern IDirectFBEventBuffer fakeEventBuffer;

// A file with this text, gone with the object.
class TextFile
{
public:
    explicit TextFile(const std::string& iText)
    {
        close(mkstemp(path.data()));
        std::ofstream(path) << iText;
    }

    ~TextFile()
    {
        std::remove(path.c_str());
    }

    std::string path = "/tmp/pebbleton-test-XXXXXX";
};

#endif
