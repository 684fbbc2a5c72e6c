#include "Fake.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <utility>

#include <sys/syscall.h>
#include <syslog.h>
#include <unistd.h>

IDirectFB fakeDirectfb;
IDirectFBSurface fakeSurfaces[3];
IDirectFBEventBuffer fakeEventBuffer;
Fake fake;

namespace
{

IDirectFBImageProvider provider;

const char* extent(const void* iPart)
{
    return iPart == nullptr ? " whole" : " part";
}

std::string shape(int iX, int iY, int iWidth, int iHeight, int iPitch)
{
    std::ostringstream text;
    text << ' ' << iX << ',' << iY << ' ' << iWidth << 'x' << iHeight << " pitch " << iPitch << ' ';
    return text.str();
}

// Hands out an interface when the call to create it went well.
template <typename Interface>
DFBResult create(Interface* iNew, Interface** ioInterface, DFBResult iResult)
{
    if (iResult == DFB_OK) {
        *ioInterface = iNew;
    }
    return iResult;
}

constexpr auto release = [](auto* iThis) { return static_cast<DirectResult>(fake.call(iThis, ".Release")); };

void fillDirectfb()
{
    fakeDirectfb.Release = release;
    fakeDirectfb.SetCooperativeLevel = [](auto* iThis, auto iLevel) {
        return fake.call(iThis, ".SetCooperativeLevel ", iLevel);
    };
    fakeDirectfb.CreateSurface = [](auto* iThis, auto* iWanted, auto** ioSurface) {
        const DFBResult result = fake.call(iThis, ".CreateSurface flags ", iWanted->flags, " caps ", iWanted->caps, ' ',
                                           iWanted->width, 'x', iWanted->height);
        return create(&fakeSurfaces[fake.surfaces++], ioSurface, result);
    };
    fakeDirectfb.CreateInputEventBuffer = [](auto* iThis, auto iCapabilities, auto iGlobal, auto** ioBuffer) {
        return create(&fakeEventBuffer, ioBuffer,
                      fake.call(iThis, ".CreateInputEventBuffer ", iCapabilities, " global ", iGlobal));
    };
    fakeDirectfb.CreateImageProvider = [](auto* iThis, auto* iFile, auto** ioProvider) {
        return create((fake.withoutProvider >> fake.providers++ & 1U) == 0 ? &provider : nullptr, ioProvider,
                      fake.call(iThis, ".CreateImageProvider ", iFile));
    };
    provider.Release = release;
    provider.GetSurfaceDescription = [](auto* iThis, auto* ioDescription) {
        const DFBResult result = fake.call(iThis, ".GetSurfaceDescription");
        if (result == DFB_OK) {
            ioDescription->flags = DSDESC_ALL;
            ioDescription->width = 800;
            ioDescription->height = 480;
        }
        return result;
    };
    provider.RenderTo = [](auto* iThis, auto* iTarget, auto* iPart) {
        return fake.call(iThis, ".RenderTo ", Fake::nameOf(iTarget), extent(iPart));
    };
}

void fillSurface(IDirectFBSurface& ioSurface)
{
    ioSurface.Release = release;
    ioSurface.GetPixelFormat = [](auto* iThis, auto* ioFormat) {
        *ioFormat = fake.format;
        return fake.call(iThis, ".GetPixelFormat");
    };
    ioSurface.Blit = [](auto* iThis, auto* iSource, auto* iPart, int iX, int iY) {
        return fake.call(iThis, ".Blit ", Fake::nameOf(iSource), extent(iPart), ' ', iX, ',', iY);
    };
    ioSurface.Flip = [](auto* iThis, auto* iPart, auto iFlags) {
        return fake.call(iThis, ".Flip", extent(iPart), ' ', iFlags);
    };
    // Every byte read is the first letter of the surface's name, and Write tells the first and the last it is given.
    ioSurface.Read = [](auto* iThis, auto* iPart, void* ioData, int iPitch) {
        const std::size_t size = static_cast<std::size_t>(iPitch) * static_cast<std::size_t>(iPart->h);
        auto* bytes = static_cast<char*>(ioData);
        const bool zeroed = std::all_of(bytes, bytes + size, [](char iByte) { return iByte == 0; });
        std::fill(bytes, bytes + size, Fake::nameOf(iThis)[0]);
        return fake.call(iThis, ".Read", shape(iPart->x, iPart->y, iPart->w, iPart->h, iPitch),
                         zeroed ? "zeroed" : "dirty");
    };
    ioSurface.Write = [](auto* iThis, auto* iPart, const void* iData, int iPitch) {
        const auto* bytes = static_cast<const char*>(iData);
        return fake.call(iThis, ".Write", shape(iPart->x, iPart->y, iPart->w, iPart->h, iPitch), bytes[0],
                         bytes[static_cast<std::size_t>(iPitch) * static_cast<std::size_t>(iPart->h) - 1]);
    };
}

Input takeInput()
{
    const Input input = fake.inputs.front();
    fake.inputs.pop_front();
    fake.now += input.after;
    return input;
}

void fillEventBuffer()
{
    fakeEventBuffer.Release = release;
    fakeEventBuffer.Reset = [](auto* iThis) { return fake.call(iThis, ".Reset"); };
    fakeEventBuffer.WaitForEvent = [](auto* iThis) {
        if (fake.inputs.empty()) {
            throw OutOfInput();
        }
        const DFBResult result = fake.call(iThis, ".WaitForEvent");
        return fake.inputs.front().wait == DFB_OK ? result : takeInput().wait;
    };
    fakeEventBuffer.GetEvent = [](auto* iThis, auto* ioEvent) {
        const DFBResult result = fake.call(iThis, ".GetEvent");
        if (result != DFB_OK) {
            return result;
        }
        const Input input = takeInput();
        if (input.get == DFB_OK) {
            ioEvent->input.type = input.type;
            ioEvent->input.axis = input.axis;
            ioEvent->input.axisabs = input.value;
        }
        return input.get;
    };
}

} // namespace

Fake::Fake()
{
    fillDirectfb();
    std::for_each(std::begin(fakeSurfaces), std::end(fakeSurfaces), fillSurface);
    fillEventBuffer();
}

void Fake::note(const std::string& iLine)
{
    if (!over) {
        trace.push_back(iLine);
    }
}

std::string Fake::nameOf(const void* iInterface)
{
    const void* const interfaces[] = {nullptr,          &fakeDirectfb,    &provider,       &fakeEventBuffer,
                                      &fakeSurfaces[0], &fakeSurfaces[1], &fakeSurfaces[2]};
    const char* const names[] = {"", "directfb", "provider", "buffer", "primary", "normal", "pressed"};
    return names[std::find(std::begin(interfaces), std::end(interfaces), iInterface) - std::begin(interfaces)];
}

std::vector<std::string> Fake::take()
{
    return std::exchange(trace, {});
}

std::vector<std::string> Fake::lines(const std::string& iStart) const
{
    std::vector<std::string> found;
    std::copy_if(trace.begin(), trace.end(), std::back_inserter(found),
                 [&](const std::string& iLine) { return iLine.rfind(iStart, 0) == 0; });
    return found;
}

// From here on the functions that the program calls instead of the libraries' own.
extern "C" {

DFBResult DirectFBInit(int* iCount, char*** iArguments)
{
    return fake.call(nullptr, "DirectFBInit ", iCount == nullptr && iArguments == nullptr ? "nothing" : "arguments");
}

DFBResult DirectFBCreate(IDirectFB** ioDirectfb)
{
    *ioDirectfb = &fakeDirectfb;
    return fake.call(nullptr, "DirectFBCreate");
}

DFBResult DirectFBErrorFatal(const char* iText, DFBResult iResult)
{
    fake.note(std::string("fatal ") + iText + ' ' + std::to_string(iResult));
    fake.over = true;
    throw Fatal{iResult & 0xff};
}

void vsyslog(int iPriority, const char* iFormat, va_list iArguments)
{
    char text[4096];
    std::vsnprintf(text, sizeof text, iFormat, iArguments);
    fake.note("log " + std::to_string(iPriority) + ' ' + text);
}

// NOLINTNEXTLINE(readability-identifier-naming): what fortified programs call
void __vsyslog_chk(int iPriority, int, const char* iFormat, va_list iArguments)
{
    vsyslog(iPriority, iFormat, iArguments);
}

int setlogmask(int iMask) noexcept
{
    fake.note("setlogmask " + std::to_string(iMask));
    return 0;
}

void openlog(const char* iIdent, int iOptions, int iFacility)
{
    fake.note(std::string("openlog ") + iIdent + ' ' + std::to_string(iOptions) + ' ' + std::to_string(iFacility));
}

void closelog()
{
    fake.note("closelog");
}

int clock_gettime(clockid_t iClock, timespec* ioTime) noexcept
{
    if (iClock != CLOCK_MONOTONIC) {
        return static_cast<int>(syscall(SYS_clock_gettime, iClock, ioTime));
    }
    *ioTime = {static_cast<time_t>(fake.now / 1000000000), static_cast<long>(fake.now % 1000000000)};
    return 0;
}
}
