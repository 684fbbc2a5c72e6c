#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Command.h"
#include "Complaints.h"
#include "DisplayFinder.h"
#include "FakeTest.h"
#include "FrameBuffer.h"
#include "Panel.h"
#include "StartWait.h"
#include "TouchOptions.h"
#include "TouchPrinter.h"
#include "TouchTranslator.h"
#include "VirtualPanel.h"

using namespace PEBBLETON;
using testing::HasSubstr;

namespace
{

// A letter for each kind of event. A number behind it is the value: "x10 y20 T1 |" is a touch on a simple panel.
const struct {
    char letter;
    std::uint16_t type;
    std::uint16_t code;
} kinds[] = {
    {'S', EV_ABS, ABS_MT_SLOT},
    {'I', EV_ABS, ABS_MT_TRACKING_ID},
    {'X', EV_ABS, ABS_MT_POSITION_X},
    {'Y', EV_ABS, ABS_MT_POSITION_Y},
    {'D', EV_ABS, ABS_MT_DISTANCE},
    {'x', EV_ABS, ABS_X},
    {'y', EV_ABS, ABS_Y},
    {'p', EV_ABS, ABS_PRESSURE},
    {'T', EV_KEY, BTN_TOUCH},
    {'F', EV_KEY, BTN_TOOL_FINGER},
    {'L', EV_KEY, BTN_LEFT},
    {'B', EV_KEY, BTN_RIGHT},
    {'P', EV_KEY, BTN_TOOL_PEN},
    {'G', EV_KEY, BTN_SOUTH},
    {'J', EV_KEY, BTN_TRIGGER},
    {'r', EV_REL, REL_X},
    {'H', EV_KEY, KEY_SPACE},
    {'M', EV_ABS, ABS_MT_TOUCH_MAJOR},
    {'Q', EV_ABS, ABS_MT_PRESSURE},
    {'O', EV_ABS, ABS_MT_TOOL_TYPE},
    {'R', EV_ABS, ABS_MT_SLOT - 1},
    {'m', EV_SYN, SYN_MT_REPORT},
    {'|', EV_SYN, SYN_REPORT},
    {'!', EV_SYN, SYN_DROPPED},
};

const auto& findKind(char iLetter)
{
    return *std::find_if(std::begin(kinds), std::end(kinds),
                         [&](const auto& iKind) { return iKind.letter == iLetter; });
}

// Writes events the way that the stories are written.
class Notes : public IEventSink
{
public:
    void Handle(unsigned iType, unsigned iCode, int iValue) override
    {
        const auto* kind = std::find_if(std::begin(kinds), std::end(kinds),
                                        [&](const auto& iKind) { return iKind.type == iType && iKind.code == iCode; });
        text += text.empty() ? "" : " ";
        text += kind->letter;
        text += iType == EV_SYN ? "" : std::to_string(iValue);
    }

    std::string text;
};

using Device = std::unique_ptr<libevdev, void (*)(libevdev*)>;

// A device that reports these kinds of event, with these values at the start: "x10 T0". Its axes go from 0 to 4095, and
// it has two slots.
Device makeDevice(const std::string& iCodes, int iProperty = INPUT_PROP_DIRECT)
{
    Device device(libevdev_new(), libevdev_free);
    libevdev_enable_property(device.get(), static_cast<unsigned>(iProperty));
    std::istringstream words(iCodes);
    for (std::string word; words >> word;) {
        const auto& kind = findKind(word[0]);
        input_absinfo axis = {};
        axis.maximum = word[0] == 'S' ? 1 : 4095;
        libevdev_enable_event_code(device.get(), kind.type, kind.code, kind.type == EV_ABS ? &axis : nullptr);
        if (word[1] != '0') {
            libevdev_set_event_value(device.get(), kind.type, kind.code, std::atoi(word.c_str() + 1));
        }
    }
    return device;
}

// The kernel's part of the device behind a pipe that PanelC reads.
const libevdev* kernelsDevice = nullptr;

void setBit(void* ioBits, std::size_t iSize, unsigned iBit, int iValue)
{
    if (iValue != 0 && iBit / 8 < iSize) {
        static_cast<unsigned char*>(ioBits)[iBit / 8] |= static_cast<unsigned char>(1U << iBit % 8);
    }
}

} // namespace

// What libevdev asks the kernel.
extern "C" int ioctl(int iDescriptor, unsigned long iRequest, ...) noexcept
{
    std::va_list arguments;
    va_start(arguments, iRequest);
    void* const answer = va_arg(arguments, void*);
    va_end(arguments);
    if (kernelsDevice == nullptr || _IOC_TYPE(iRequest) != 'E') {
        return static_cast<int>(syscall(SYS_ioctl, iDescriptor, iRequest, answer));
    }
    const std::size_t size = _IOC_SIZE(iRequest);
    const auto number = static_cast<unsigned>(_IOC_NR(iRequest));
    if (number == _IOC_NR(EVIOCGMTSLOTS(0))) {
        int* const values = static_cast<int*>(answer);
        for (unsigned slot = 0; slot + 1 < size / sizeof(int); ++slot) {
            values[slot + 1] = libevdev_get_slot_value(kernelsDevice, slot, static_cast<unsigned>(values[0]));
        }
        return 0;
    }
    std::memset(answer, 0, size);
    constexpr unsigned firstAxis = _IOC_NR(EVIOCGABS(0));
    constexpr unsigned firstType = _IOC_NR(EVIOCGBIT(0, 0));
    if (number >= firstAxis) {
        const input_absinfo* axis = libevdev_get_abs_info(kernelsDevice, number - firstAxis);
        *static_cast<input_absinfo*>(answer) = axis != nullptr ? *axis : input_absinfo();
        return 0;
    }
    for (unsigned bit = 0; bit < KEY_CNT; ++bit) {
        setBit(answer, size, bit,
               number > firstType                 ? libevdev_has_event_code(kernelsDevice, number - firstType, bit)
               : number == firstType              ? libevdev_has_event_type(kernelsDevice, bit)
               : number == _IOC_NR(EVIOCGKEY(0))  ? libevdev_get_event_value(kernelsDevice, EV_KEY, bit)
               : number == _IOC_NR(EVIOCGPROP(0)) ? libevdev_has_property(kernelsDevice, bit)
                                                  : 0);
    }
    return 0;
}

namespace
{

const ScreenSize screen = {800, 480};
const ScreenMapC pixels(screen, {0, 799}, {0, 479}, {});

// A folder of files, gone with the object.
class Folder
{
public:
    ~Folder()
    {
        std::filesystem::remove_all(path);
    }

    void Write(const std::string& iFile, const std::string& iText) const
    {
        std::filesystem::create_directories((path / iFile).parent_path());
        std::ofstream(path / iFile) << iText;
    }

    std::string ReadLine(const std::string& iFile) const
    {
        std::string line;
        std::getline(std::ifstream(path / iFile), line);
        return line;
    }

private:
    const TextFile mName{""};

public:
    const std::filesystem::path path = mName.path + ".d";
};

// Plays stories to the adapter's own reading of a panel, by way of libevdev.
class Stage
{
public:
    Stage(IEventSink& ioSink, const char* iCodes) : mSink(ioSink), mModel(makeDevice(iCodes))
    {
        kernelsDevice = mModel.get();
        libevdev_set_log_function(nullptr, nullptr); // as the adapter does
        const std::string path = (mFolder.path / "panel").string();
        std::filesystem::create_directories(mFolder.path);
        mkfifo(path.c_str(), 0600);
        mWriter = open(path.c_str(), O_RDWR | O_CLOEXEC);
        mPanel = PanelC::Open(path);
        Translate();
    }

    ~Stage()
    {
        kernelsDevice = nullptr;
        close(mWriter);
    }

    // "C" cancels the touch, "W" waits for one that is late, and "~30" lets so many seconds pass.
    void Play(const std::string& iStory)
    {
        std::istringstream words(iStory);
        for (std::string word; words >> word;) {
            const int value = std::atoi(word.c_str() + 1);
            if (word == "C") {
                mTranslator->Cancel();
            } else if (word == "W") {
                mTranslator->PressLate();
            } else if (word[0] == '~') {
                mNow += std::chrono::seconds(value);
            } else {
                Tell(word[0], value);
            }
        }
    }

private:
    void Translate()
    {
        mTranslator.reset();
        mTranslator = std::make_unique<TouchTranslatorC>(mSink, pixels, mPanel->GetContacts(), [this] { return mNow; });
    }

    void Tell(char iLetter, int iValue)
    {
        const auto& kind = findKind(iLetter);
        const input_event event = {{}, kind.type, kind.code, iValue};
        libevdev_set_event_value(mModel.get(), event.type, event.code, event.value);
        ASSERT_EQ(static_cast<ssize_t>(sizeof(event)), write(mWriter, &event, sizeof(event)));
        if (mPanel->Read(*mTranslator) == PanelC::State::Lost) {
            Translate();
        }
    }

    IEventSink& mSink;
    Device mModel;
    Folder mFolder;
    int mWriter = -1;
    std::unique_ptr<PanelC> mPanel;
    TouchTranslatorC::Time mNow;
    std::unique_ptr<TouchTranslatorC> mTranslator; // uses mNow
};

constexpr const char* simple = "x0 y0 T0";
constexpr const char* slots = "X0 Y0 S0 I0 x0 y0 T0";
constexpr const char* anonymous = "X0 Y0 T0 I0 O0 Q0 M0";
constexpr const char* palms = "X0 Y0 S0 I0 O0";

TEST(TouchTest, EveryTouchIsWholeAndTheFirstFingerIsIt)
{
    const struct {
        const char* device;
        std::string story;
        std::string told;
    } stories[] = {
        // The touch before its position, and after it; an axis that has not changed is left out.
        {simple, "T1 x10 y20 | T0 |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {"x10 y20 T0", "T1 | T0 | T1 y21 | T0 |", "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x10 y21 T1 | T0 |"},
        {"x0 y0 T0 F0 p0", "F1 p40 T1 x10 y20 | p41 | F0 p0 T0 |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {"x0 y0 L0", "x10 y20 | L1 | x11 | L0 |", "x-1 y-1 | x10 y20 T1 | x11 y20 | T0 |"},
        // Nothing new, nothing said; motion that comes with the lift still counts.
        {simple, "x10 y20 | x11 | | H1 | H0 | T1 | | T1 | x11 | H1 | y21 | T0 |",
         "x-1 y-1 | x11 y20 T1 | x11 y21 | T0 |"},
        {simple, "T1 x10 y20 | T0 x99 |", "x-1 y-1 | x10 y20 T1 | x99 y20 | T0 |"},
        // Several fingers: ABS_X and its like follow another one, which is none of our business.
        {slots, "H1 | I7 X10 Y20 T1 x10 y20 | H0 | I-1 T0 |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {slots, "I7 X10 Y20 | S1 I8 X50 Y60 | X51 | S0 X11 | I-1 x51 y60 | S1 X52 | I-1 | S0 I9 | I-1 |",
         "x-1 y-1 | x10 y20 T1 | x11 y20 | T0 | x-1 y-1 | x11 y20 T1 | T0 |"},
        {slots, "I7 X10 Y20 | S1 I8 X50 Y60 | S0 I-1 | I9 X30 | S1 I-1 | S0 I-1 |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x30 y20 T1 | T0 |"},
        {slots, "S1 I8 X50 Y60 | S0 I7 X10 Y20 | S1 I-1 | I9 | S0 X12 | I-1 | S1 I-1 |",
         "x-1 y-1 | x50 y60 T1 | T0 | x-1 y-1 | x50 y60 T1 | T0 |"},
        {slots, "I7 X10 Y20 S1 I8 X50 Y60 | S0 I-1 | S1 I-1 |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        // Another finger without a lift before, and slots that there are not: libevdev leaves out what makes no sense.
        {slots, "I7 X10 Y20 | I8 X50 Y60 | I-1 |", "x-1 y-1 | x10 y20 T1 | x50 y60 | T0 |"},
        {slots, "S5 I7 X10 Y20 | S-1 X11 | S1 X12 | I-1 |", "x-1 y-1 | x10 y20 T1 | x11 y20 | x12 y20 | T0 |"},
        // One lifts and the next comes in one report, in another slot and in the same.
        {slots, "I7 X10 Y20 | I-1 S1 I8 X50 Y60 | C I-1 |", "x-1 y-1 | x10 y20 T1 | T0 |"}, // not at once
        {slots, "I7 X10 Y20 | W I-1 S1 I8 X50 Y60 | W I-1 |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x50 y60 T1 | T0 |"},
        {slots, "I7 X10 Y20 | I-1 S1 I8 X50 Y60 | X51 | I-1 |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x51 y60 T1 | T0 |"},
        {slots, "I7 X10 Y20 | I-1 S1 I8 X50 Y60 | I-1 S0 I9 | C |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x50 y60 T1 | T0 |"},
        {slots, "I7 X10 Y20 | I-1 I8 X50 | I-1 |", "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x50 y20 T1 | T0 |"},
        // A lift at 0,0.
        {simple, "T1 x10 y20 | T0 x0 y0 | T1 y20 | x1 | T0 x0 |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x0 y20 T1 | x1 y20 | x0 y20 | T0 |"},
        {simple, "T1 x10 y20 | T0 y0 |", "x-1 y-1 | x10 y20 T1 | x10 y0 | T0 |"},
        // What lies still for half a minute gives way to the next finger; alone it may rest for longer.
        {slots, "I7 X10 Y20 | ~29 S1 I8 X50 Y60 | I-1 | ~1 X51 | I9 | I-1 |",
         "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 | x-1 y-1 | x51 y60 T1 | T0 |"},
        {slots, "I7 X10 Y20 | ~20 X20 | Y10 | ~10 S1 I8 X50 | I-1 S0 I-1 |",
         "x-1 y-1 | x10 y20 T1 | x20 y20 | x20 y10 | x-1 y-1 | B1 | B0 | T0 | x-1 y-1 | x50 y0 T1 | T0 |"},
        {slots, "I7 X10 Y20 | I-1 | ~30 I8 | S1 I9 | S0 I-1 |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x10 y20 T1 | T0 |"},
        {slots, "I7 X10 Y20 | ~20 X21 | ~10 S1 I8 | I-1 | S0 Y31 | ~29 S1 I9 | ~1 S0 I-1 |",
         "x-1 y-1 | x10 y20 T1 | x21 y20 | x21 y31 | T0 |"},
        // Palms, also one that was a finger, and one that was there before us.
        {palms, "O2 I7 X10 Y20 | X11 | O0 | I-1 | I8 | I-1 |", "x-1 y-1 | x11 y20 T1 | T0 |"},
        {palms, "I7 X10 Y20 | O2 I-1 |", "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {anonymous, "O2 X10 Y20 m | O2 M0 X10 Y20 m | X50 Y60 m | O2 M0 X50 Y60 m |",
         "x-1 y-1 | x50 y60 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {palms, "I7 X10 Y20 | O2 | O0 X12 | I-1 |", "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {"S0 X10 Y20 I7 O2", "X11 | I-1 | I8 | O0 | I-1 | I9 | I-1 |", "x-1 y-1 | x11 y20 T1 | T0 |"},
        {anonymous, "O2 X10 Y20 m | O0 X11 Y20 m | m | X12 Y20 m | O2 X12 Y20 m | X12 Y20 m | m |",
         "x-1 y-1 | x12 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {"X0 Y0 S0 I0 D0", "I7 D3 X10 Y20 | X11 | D0 | D2 X12 | X13 | I-1 |", "x-1 y-1 | x11 y20 T1 | x12 y20 | T0 |"},
        {"S1 X10 Y20 I7 D3", "D0 X11 | I-1 |", "x-1 y-1 | x11 y20 T1 | T0 |"}, // as it was before us
        // Fingers without names, in any order; the one that stays near is the same.
        {anonymous, "X10 Y20 m | X12 Y20 m | m |", "x-1 y-1 | x10 y20 T1 | x12 y20 | T0 |"},
        {anonymous, "X10 Y20 m | X50 Y60 m X11 Y20 m | X12 Y20 m X51 Y60 m | X52 Y60 m | m |",
         "x-1 y-1 | x10 y20 T1 | x11 y20 | x12 y20 | T0 |"},
        {anonymous, "X10 Y20 m | H1 | X10 Y20 m X50 Y60 m | X10 Y20 m | T0 | X50 Y60 m |",
         "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x50 y60 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {anonymous, "X10 Y20 m X50 Y60 m X90 Y99 m | X90 Y99 m X50 Y60 m X11 Y20 m | m |",
         "x-1 y-1 | x10 y20 T1 | x11 y20 | T0 |"},
        {anonymous, "M5 X10 Y20 m | X10 Y20 M0 m |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {anonymous, "Q0 M5 X10 Y20 m | Q5 X11 Y20 m | Q0 M5 X11 Y20 m | m |", "x-1 y-1 | x11 y20 T1 | T0 |"},
        // With numbers, by which each is known wherever it is.
        {anonymous, "I3 X10 Y20 m | I4 X50 Y60 m | m |", "x-1 y-1 | x10 y20 T1 | T0 | x-1 y-1 | x50 y60 T1 | T0 |"},
        {anonymous, "X10 Y20 m I3 X50 Y60 m | I3 X50 Y60 m X11 Y20 m | m |", "x-1 y-1 | x10 y20 T1 | x11 y20 | T0 |"},
        {anonymous, "I3 X10 Y20 m | I4 X10 Y20 m I3 X50 Y60 m | I4 X10 Y20 m | m |",
         "x-1 y-1 | x10 y20 T1 | x50 y60 | T0 |"},
        // Where it is not known whether a finger is down, those of the first report may have been there before.
        {"X0 Y0", "H1 | X10 Y20 m | X11 Y20 m | m | X10 Y20 m | m |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {"X0 Y0 T1", "X10 Y20 m | T0 m | T1 X10 Y20 m | T0 m |", "x-1 y-1 | x10 y20 T1 | T0 |"},
        {anonymous, "T1 X10 Y20 m | ! | X10 Y20 m | T0 m | T1 X11 Y20 m | T0 m |",
         "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 | x-1 y-1 | x11 y20 T1 | T0 |"},
        // Cancelled touches: parked first. The fingers of then are touches no more.
        {simple, "T1 x10 y20 | C T0 | T1 |",
         "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 | x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {simple, "T1 x10 y20 | ! x11 | x12 | T0 | C", "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {slots, "I7 X10 Y20 | S1 I8 X50 Y60 | C S0 I-1 | S1 X51 | S0 I9 |",
         "x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 | x-1 y-1 | x10 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"},
        {"S0 X10 Y20 I7", "X11 | I-1 |", ""},
        {"x10 y20 T1", "x11 | T0 | T1 |", "x-1 y-1 | x11 y20 T1 | x-1 y-1 | B1 | B0 | T0 |"}, // it was down before us
    };
    for (const auto& story : stories) {
        Notes notes;
        {
            Stage(notes, story.device).Play(story.story);
        }
        EXPECT_EQ(story.told, notes.text) << story.device << ": " << story.story;
    }
}

TEST(TouchTest, AFingerTakesTheFirstFreePlace)
{
    ContactsC contacts(Protocol::Anonymous, {});
    for (int place = 0; place < 3; ++place) {
        contacts.Handle(EV_ABS, ABS_MT_POSITION_X, place);
        for (const int code : {SYN_MT_REPORT, SYN_REPORT, SYN_MT_REPORT, SYN_REPORT}) {
            EXPECT_EQ(code == SYN_REPORT, contacts.Handle(EV_SYN, static_cast<unsigned>(code), 0));
        }
    }
    EXPECT_EQ(1u, contacts.Get().size());
}

TEST(TouchTest, KnowsAPanel)
{
    const struct {
        const char* codes;
        int property;
        PanelKind kind;
    } cases[] = {
        {simple, INPUT_PROP_DIRECT, PanelKind::Screen},
        {slots, INPUT_PROP_DIRECT, PanelKind::Screen},
        {anonymous, INPUT_PROP_DIRECT, PanelKind::Screen},
        {"x0 y0 T0 F0 p0", INPUT_PROP_MAX, PanelKind::Screen},
        {"x0 y0 L0", INPUT_PROP_MAX, PanelKind::Pointer},
        {"x0 y0 L0 T0", INPUT_PROP_POINTER, PanelKind::Pad},
        {slots, INPUT_PROP_POINTER, PanelKind::Pad},
        {"X0 Y0 x0 y0 L0", INPUT_PROP_SEMI_MT, PanelKind::Pointer},
        {"X0 Y0 S0 R0 x0 y0 L0", INPUT_PROP_MAX, PanelKind::Pointer},
        {"x0 y0 T0 P0", INPUT_PROP_DIRECT, PanelKind::Pen},
        {"x0 y0 T0 P0 F0", INPUT_PROP_DIRECT, PanelKind::Screen},
        {"X0 Y0 x0 y0 T0 P0", INPUT_PROP_DIRECT, PanelKind::Screen},
        {"x0 y0 T0", INPUT_PROP_ACCELEROMETER, PanelKind::None},
        {"x0 y0 L0 G0", INPUT_PROP_MAX, PanelKind::None},
        {"x0 y0 T0 J0", INPUT_PROP_MAX, PanelKind::None},
        {"x0 y0 L0 r0", INPUT_PROP_MAX, PanelKind::None},
        {"x0 y0 T0 r0", INPUT_PROP_MAX, PanelKind::Screen},
        {"x0 y0 H0", INPUT_PROP_MAX, PanelKind::None},
        {"x0 T0", INPUT_PROP_MAX, PanelKind::None},
        {"X0 T0", INPUT_PROP_MAX, PanelKind::None},
    };
    for (const auto& c : cases) {
        const Device device = makeDevice(c.codes, c.property);
        EXPECT_EQ(c.kind, KindOf(device.get())) << c.codes;
        if (c.kind != PanelKind::None) {
            EXPECT_EQ(4095, RangeXOf(device.get()).last);
            EXPECT_EQ(4095, RangeYOf(device.get()).last);
        }
    }
    EXPECT_LT(PanelKind::Pad, PanelKind::Pointer);
    EXPECT_LT(PanelKind::Pointer, PanelKind::Pen);
    EXPECT_LT(PanelKind::Pen, PanelKind::Screen);
}

TEST(TouchTest, FindsThePixel)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const struct {
        AxisRange x;
        AxisRange y;
        Orientation orientation; // inverted x, inverted y, swapped
        Position onPanel;
        Position pixel;
    } cases[] = {
        {{0, 799}, {0, 479}, {}, {123, 456}, {123, 456}},
        {{0, 4095}, {0, 4095}, {}, {0, 4095}, {0, 479}},
        {{0, 4095}, {0, 4095}, {}, {4095, 0}, {799, 0}},
        {{0, 4095}, {0, 4095}, {}, {4096, -1}, {799, 0}},
        {{0, 4095}, {0, 4095}, {}, {1000, 2000}, {195, 234}},
        {{100, 200}, {-50, 50}, {}, {100, 50}, {0, 479}},
        {{200, 100}, {50, -50}, {}, {200, 0}, {0, 240}},
        {{least, most}, {most, least}, {}, {most, most}, {799, 0}},
        {{least, most}, {most, least}, {}, {0, 0}, {400, 239}},
        {{0, 4095}, {0, 4095}, {true, false, false}, {0, 0}, {799, 0}},
        {{0, 4095}, {0, 4095}, {false, true, false}, {0, 0}, {0, 479}},
        {{0, 4095}, {0, 1023}, {false, false, true}, {4095, 0}, {0, 479}},
        {{0, 4095}, {0, 1023}, {true, false, true}, {4095, 1023}, {799, 0}},
        {{0, 4095}, {0, 1023}, {false, true, true}, {4095, 1023}, {0, 479}},
        {{7, 7}, {0, 479}, {}, {7, 9}, {0, 9}},
    };
    for (const auto& c : cases) {
        const Position pixel = ScreenMapC(screen, c.x, c.y, c.orientation).ToPixel(c.onPanel);
        EXPECT_EQ(std::make_pair(c.pixel.x, c.pixel.y), std::make_pair(pixel.x, pixel.y)) << c.onPanel.x;
    }
}

// What DRM says of its connectors: the status and the modes of each.
struct Connector {
    const char* name;
    std::string status;
    const char* modes;
};

const std::string connectors = "sys/class/drm/";

TEST(TouchTest, FindsTheDisplay)
{
    const char* const card0 = "/dev/dri/card0";
    const struct {
        std::vector<Connector> connectors;
        Position size; // 0, 0: none
        const char* card;
        bool asked = true; // whether the kernel is made to look
    } cases[] = {
        {{}, {0, 0}, ""},
        {{{"card0-A-1", "disconnected", ""}, {"card0-B-1", "connected", "800x480\n1x1\n"}}, {800, 480}, card0, false},
        {{{"card1-A-1", "connected", "7x12\n"}, {"card0-B-1", "connected", "1920x900i\n"}}, {1920, 900}, card0, false},
        {{{"card12-HDMI-A-1", "connected", "720x1280\n"}}, {720, 1280}, "/dev/dri/card12", false},
        {{{"card0-A-1", "connected", ""}, {"card0-B-2", "connected", "65535x1\n"}}, {65535, 1}, card0, false},
        {{{"card0-Virtual-1", "unknown", "800x480\n"}, {"card0-DP-1", "disconnected", "800x480\n"}}, {0, 0}, ""},
        {{{"card0", "connected", "800x480\n"}, {"version", "connected", "800x480\n"}}, {0, 0}, "", false},
        {{{"card0-DP-1", "connected", "65536x1\n"}, {"card0-DP-2", "connected", "1x65536\n"}}, {0, 0}, ""},
        {{{"card0-DP-1", "connected", "0x1\n"}, {"card0-DP-2", "connected", "800*480\n"}}, {0, 0}, ""},
    };
    for (const auto& c : cases) {
        const Folder root;
        for (const Connector& connector : c.connectors) {
            root.Write(connectors + connector.name + "/status", connector.status + '\n');
            root.Write(connectors + connector.name + "/modes", connector.modes);
        }
        DisplayFinderC finder(root.path);
        EXPECT_EQ(c.size.x != 0, finder.Look());
        const Display found = c.size.x != 0 ? finder.Get() : Display{{0, 0}, ""};
        EXPECT_EQ(std::make_pair(c.size.x, c.size.y), std::make_pair(found.size.width, found.size.height));
        EXPECT_EQ(c.card, found.card);
        for (const Connector& connector : c.connectors) {
            EXPECT_EQ(c.asked ? "detect" : connector.status, root.ReadLine(connectors + connector.name + "/status"))
                << connector.name;
        }
    }
}

TEST(TouchTest, LooksOnForADisplay)
{
    const Folder root;
    DisplayFinderC finder(root.path);
    EXPECT_FALSE(finder.Look());
    EXPECT_EQ(ENOENT, finder.GetError());
    root.Write("dev/fb0", "no device");
    root.Write(connectors + "card1-DP-1/status", "disconnected");
    for (int looks = 0; looks < 9; ++looks) {
        EXPECT_FALSE(finder.Look());
        EXPECT_EQ("disconnected", root.ReadLine(connectors + "card1-DP-1/status"));
    }
    EXPECT_EQ(EINVAL, finder.GetError());
    EXPECT_FALSE(finder.Look());
    EXPECT_EQ("detect", root.ReadLine(connectors + "card1-DP-1/status"));

    root.Write(connectors + "card1-DP-1/status", "connected");
    root.Write(connectors + "card1-DP-1/modes", "800x480");
    EXPECT_TRUE(finder.Look());
    for (const char* emulation : {"", "N\n", "Y\n"}) {
        root.Write("sys/module/drm_kms_helper/parameters/fbdev_emulation", emulation);
        EXPECT_EQ(*emulation != 'Y', finder.IsFinal()) << emulation;
    }
    root.Write(connectors + "card1-DP-1/status", "disconnected");
    EXPECT_TRUE(finder.Look());
    EXPECT_EQ("/dev/dri/card1", finder.Get().card);
}

TEST(TouchTest, FindsWhatBelongsTogether)
{
    const Folder root;
    const std::string folder = root.path;
    EXPECT_EQ("", ReadFrameBufferCard(folder + "/fb0"));
    root.Write("fb0/device/drm/renderD128/dev", "");
    EXPECT_EQ("", ReadFrameBufferCard(folder + "/fb0"));
    root.Write("fb0/device/drm/card1/dev", "");
    EXPECT_EQ("/dev/dri/card1", ReadFrameBufferCard(folder + "/fb0"));

    EXPECT_EQ("", VirtualPanelC::FindDevice(folder + "/input5", folder));
    root.Write("input5/mouse1/dev", "");
    root.Write("mouse1", "");
    root.Write("event4", "");
    EXPECT_EQ("", VirtualPanelC::FindDevice(folder + "/input5", folder));
    root.Write("input5/event12/dev", "");
    EXPECT_EQ("", VirtualPanelC::FindDevice(folder + "/input5", folder));
    root.Write("event12", "");
    EXPECT_EQ(folder + "/event12", VirtualPanelC::FindDevice(folder + "/input5", folder));
}

// The words of a command line, as main gets them.
std::vector<char*> wordsOf(std::string& ioLine)
{
    std::vector<char*> words;
    for (char* word = std::strtok(ioLine.data(), " "); word != nullptr; word = std::strtok(nullptr, " ")) {
        words.push_back(word);
    }
    words.push_back(nullptr);
    return words;
}

using TouchProgramTest = FakeTest;

TEST_F(TouchProgramTest, ReadsItsOwnOptionsAndLeavesTheCommandsAlone)
{
    const struct {
        std::string line;
        const char* command; // its first word; null: refused
        std::string complaint = {};
    } cases[] = {
        {"t menu --print -h", "menu"},
        {"t --print -- --menu", "--menu"},
        {"t --screen 1x65535 --device /dev/x menu", "menu"},
        {"t --dev x menu", "menu"},
        {"t - --print", "-"},
        {"t --device --print menu", nullptr, "--device"},
        {"t --device -- menu", nullptr, "--device"},
        {"t --device= menu", nullptr, "--device"},
        {"t --dev=x --range -5:90:7:-80 --swapped-x-y menu", "menu"},
        {"t --range=0:1:0:2 menu --device", "menu"},
        {"t --wait 0 --wait", nullptr, "--wait"},
        {"t --wait=2147483647 menu", "menu"},
        {"t", nullptr, "no command is given"},
        {"t --print --", nullptr, "no command is given"},
        {"t --device", nullptr, "--device"},
        {"t --foo menu", nullptr, "--foo"},
        {"t --device a --device b menu", nullptr, "--device"},
        {"t --print=1 menu", nullptr, "--print"},
        {"t --screen 800 menu", nullptr, "such as 800x480, not 800;"},
        {"t --screen 0x480 menu", nullptr, "not 0x480;"},
        {"t --screen 800x65536 menu", nullptr, "not 800x65536;"},
        {"t --screen 800x480x menu", nullptr, "not 800x480x;"},
        {"t --wait -1 menu", nullptr, "such as 60, not -1;"},
        {"t --wait 1.5 menu", nullptr, "not 1.5;"},
        {"t --range 0:4095 menu", nullptr, "such as 0:4095:0:4095, not 0:4095;"},
        {"t --range 0:9:3: menu", nullptr, "not 0:9:3:;"},
        {"t --range 3:3:0:9 menu", nullptr, "not 3:3:0:9;"},
        {"t --range 0:9:3:3 menu", nullptr, "not 0:9:3:3;"},
        {"t --range 0:9:1:4294967296 menu", nullptr, "not 0:9:1:4294967296;"},
    };
    for (auto c : cases) {
        const std::string line = c.line;
        std::vector<char*> words = wordsOf(c.line);
        TouchOptions chosen;
        fake = Fake();
        testing::internal::CaptureStderr();
        const bool accepted = ParseTouchOptions(static_cast<int>(words.size()) - 1, words.data(), chosen);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(c.command != nullptr, accepted) << line;
        if (accepted) {
            EXPECT_STREQ(c.command, chosen.command[0]);
            EXPECT_EQ("", said);
        } else {
            EXPECT_THAT(said, testing::AllOf(testing::StartsWith("pebbleton-touch: "), HasSubstr(c.complaint),
                                             testing::EndsWith("; see pebbleton-touch --help\n")));
            EXPECT_THAT(fake.take(), testing::ElementsAre("log 3 " + said.substr(17, said.size() - 18)));
        }
    }
    std::string line = "t --version";
    TouchOptions chosen;
    EXPECT_TRUE(ParseTouchOptions(2, wordsOf(line).data(), chosen) && chosen.version && !chosen.help);
    line = "t -h";
    EXPECT_TRUE(ParseTouchOptions(2, wordsOf(line).data(), chosen));
    EXPECT_TRUE(chosen.help);
    EXPECT_EQ(60, chosen.wait.count());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(PrintTouchHelp() && printTouchVersion());
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::AllOf(HasSubstr("Usage: pebbleton-touch "), HasSubstr("--swapped-x-y"),
                               HasSubstr("\npebbleton-touch ")));
    line = "t --screen 800x480 --range -5:90:7:-80 --inverted-x --swapped-x-y --inverted-y --device a --print --wait 0 "
           "--other-devices menu";
    ASSERT_TRUE(ParseTouchOptions(15, wordsOf(line).data(), chosen));
    const auto& [help, version, device, size, range, orientation, print, otherDevices, wait, command] = chosen;
    EXPECT_THAT((std::vector{size->width, size->height, range->x.first, range->x.last, range->y.first, range->y.last}),
                testing::ElementsAre(800, 480, -5, 90, 7, -80));
    EXPECT_THAT((std::vector{help || version, orientation.invertedX, orientation.invertedY, orientation.swapped, print,
                             otherDevices}),
                testing::ElementsAre(false, true, true, true, true, true));
    EXPECT_EQ("a", device);
    EXPECT_EQ(0, wait.count());
}

TEST_F(TouchProgramTest, ComplainsOnceAMinute)
{
    ComplaintsC::Time now;
    ComplaintsC complaints([&] { return now; });
    testing::internal::CaptureStderr();
    for (const int second : {0, 59, 60}) {
        now = ComplaintsC::Time(std::chrono::seconds(second));
        complaints.Say("dust");
        complaints.Say(second == 59 ? "rust" : "dust");
    }
    EXPECT_EQ("pebbleton-touch: dust\npebbleton-touch: rust\npebbleton-touch: dust\n",
              testing::internal::GetCapturedStderr());
}

TEST_F(TouchProgramTest, PrintsEachTouch)
{
    Notes notes;
    TouchTranslatorC translator(notes, ScreenMapC(screen, {0, 4095}, {0, 4095}, {}),
                                ContactsOf(makeDevice(simple).get()));
    TouchPrinterC printer(translator);
    testing::internal::CaptureStderr();
    for (const int value : {1000, 1001, 1002}) {
        printer.Handle(EV_ABS, ABS_X, value);
        printer.Handle(EV_KEY, BTN_TOUCH, value == 1002 ? 0 : 1);
        printer.Handle(EV_SYN, SYN_REPORT, 0);
    }
    EXPECT_EQ("pebbleton-touch: a touch at 1000,0 on the panel is pixel 195,0\n",
              testing::internal::GetCapturedStderr());
    EXPECT_THAT(notes.text, testing::StartsWith("x-1 y-1 | x195 y0 T1 | "));
}

// Runs a command to its end, handing on what comes, and returns its status.
int run(std::vector<const char*> iWords)
{
    iWords.push_back(nullptr);
    CommandC command;
    EXPECT_TRUE(command.Start(const_cast<char* const*>(iWords.data()))); // NOLINT: exec's way to take them
    while (!command.GetStatus()) {
        pollfd source = {command.GetDescriptor(), POLLIN, 0};
        poll(&source, 1, -1);
        while (const auto signal = command.TakeSignal()) {
            command.HandOn(*signal);
        }
    }
    return *command.GetStatus();
}

TEST_F(TouchProgramTest, ACommandIsAsItWouldBeAlone)
{
    // What awaits a signal does so for a second or so, so that it ends also when the signal never comes.
    const struct {
        std::vector<const char*> words;
        int status;
        const char* complaint = "";
    } cases[] = {
        {{"sh", "-c", "exit 7"}, 7},
        {{"sh", "-c", "exit $#", "sh", "a", "b c"}, 2},
        {{"sh", "-c", "kill -KILL $$"}, 137},
        {{"sh", "-c", "trap 'exit 3' TERM; kill -TERM $PPID; while [ $((i += 1)) -lt 999999 ]; do :; done"}, 3},
        {{"sh", "-c", "trap 'exit 4' INT; kill -INT $PPID; while [ $((i += 1)) -lt 999999 ]; do :; done"}, 4},
        {{"sh", "-c", "trap 'exit 5' HUP; kill -HUP $PPID; while [ $((i += 1)) -lt 999999 ]; do :; done"}, 5},
        {{"sh", "-c", "kill -QUIT $PPID; while [ $((i += 1)) -lt 999999 ]; do :; done"}, 131},
        {{"sh", "-c", "kill -PIPE $PPID; exit 6"}, 6},
        {{"sh", "-c", "kill -CHLD $PPID; exit 8"}, 8},
        {{"grep", "-q", "SigBlk:.0*$", "/proc/self/status"}, 0},
        {{"grep", "-q", "SigIgn:.0*10000$", "/proc/self/status"}, 0}, // SIGCHLD, as below
        {{"sh", "-c", "readlink /proc/self/fd/* | grep -q signalfd"}, 1},
        {{"/etc/passwd/menu"}, 126, "/etc/passwd/menu cannot be started (Not a directory)"},
        {{"/nowhere/menu"}, 127, "/nowhere/menu cannot be started (No such file or directory)"},
        {{"/etc"}, 126, "/etc cannot be started (Permission denied)"},
    };
    for (const auto& c : cases) {
        sigset_t mask;
        sigprocmask(SIG_SETMASK, nullptr, &mask);
        signal(SIGCHLD, SIG_IGN); // NOLINT(cert-err33-c)
        testing::internal::CaptureStderr();
        EXPECT_EQ(c.status, run(c.words)) << c.words.back();
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(c.complaint));
        sigprocmask(SIG_SETMASK, &mask, nullptr);
        signal(SIGPIPE, SIG_DFL); // NOLINT(cert-err33-c)
    }
}

// Each look takes half a second; at the first one the signal comes.
TEST_F(TouchProgramTest, WaitsBeforeTheStart)
{
    using Result = StartWaitC::Result;
    const std::string said = "log 6 waits for a display, for 3 seconds at the most";
    const struct {
        const char* name;
        int at;
        int most;
        Result result;
        int looks;
        std::vector<std::string> log = {};
        const char* what = "a display";
        int signal = 0;
        int status = 0; // 0: none
        bool isIgnored = false;
    } cases[] = {
        {"is there", 1, 0, Result::There, 1},
        {"no patience", 2, 0, Result::Missing, 1},
        {"comes before it is worth a word", 2, 3, Result::There, 2},
        {"comes after a second", 3, 3, Result::There, 3, {said}},
        {"comes in the last moment", 6, 3, Result::There, 6, {said}},
        {"comes too late", 7, 3, Result::Missing, 6, {said}},
        {"too short for a word", 9, 1, Result::Missing, 2},
        {"in silence", 9, 2, Result::Missing, 4, {}, nullptr},
        {"told to stop", 9, 3, Result::Stopped, 1, {}, "a display", SIGTERM, 143},
        {"interrupted", 9, 3, Result::Stopped, 1, {}, "a display", SIGINT, 130},
        {"hung up", 9, 3, Result::Stopped, 1, {}, "a display", SIGHUP, 129},
        {"quit", 9, 3, Result::Stopped, 1, {}, "a display", SIGQUIT, 131},
        {"hung up under nohup", 2, 3, Result::There, 2, {}, "a display", SIGHUP, 0, true},
        {"a child ends that was there before", 2, 3, Result::There, 2, {}, "a display", SIGCHLD},
    };
    for (const auto& c : cases) {
        sigset_t mask;
        sigprocmask(SIG_SETMASK, nullptr, &mask);
        fake = Fake();
        if (c.isIgnored) {
            signal(c.signal, SIG_IGN); // NOLINT(cert-err33-c)
        }
        testing::internal::CaptureStderr();
        {
            CommandC command;
            int looks = 0;
            const auto look = [&] {
                fake.now += 500000000;
                EXPECT_EQ(0, ++looks > 1 || c.signal == 0 ? 0 : kill(getpid(), c.signal));
                return looks >= c.at;
            };
            EXPECT_EQ(c.result, StartWaitC(command).For(look, std::chrono::seconds(c.most), c.what)) << c.name;
            EXPECT_EQ(c.looks, looks) << c.name;
            EXPECT_EQ(c.status, command.GetStatus().value_or(0)) << c.name;
        }
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(c.log, fake.take()) << c.name;
        sigprocmask(SIG_SETMASK, &mask, nullptr);
        signal(SIGPIPE, SIG_DFL); // NOLINT(cert-err33-c)
        signal(SIGHUP, SIG_DFL);  // NOLINT(cert-err33-c)
    }
}

// A key's signal goes to the whole group, which the command is in or not; a hang-up's to the first process alone. The
// command counts them.
TEST_F(TouchProgramTest, WhatTheTerminalSendsReachesTheCommandOnce)
{
    const std::string count = "trap 'n=$((n + 1))' INT QUIT HUP; echo .;"
                              "while [ -z \"$n\" ] && [ $((i += 1)) -lt 9999999 ]; do :; done;"
                              "i=0; while [ $((i += 1)) -lt 99999 ]; do :; done; exit $n";
    for (const char* sent : {"\003", "\034", ""}) {
        for (const char* group : {"env", "setsid"}) {
            int terminal = -1;
            const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
            if (child == 0) {
                _exit(run({group, "sh", "-c", count.c_str()}));
            }
            char ready = 0;
            ASSERT_EQ(1, read(terminal, &ready, 1));
            ASSERT_EQ(0, *sent == '\0' ? close(terminal) : static_cast<int>(write(terminal, sent, 1)) - 1);
            int status = 0;
            ASSERT_EQ(child, waitpid(child, &status, 0));
            EXPECT_EQ(1, WEXITSTATUS(status)) << group << ' ' << int{*sent};
        }
    }
}

} // namespace
