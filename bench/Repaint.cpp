// What a repaint takes on the real DirectFB, beside what DirectFB and memory allow. DFBARGS chooses the screen, of
// which a skin has the size and the pixel format.
//
// With REPAINTS in the environment there are so many of each kind, for a tool that counts instructions: in the
// functions `By...`, and anew after each `repaint`.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>

#include "BareCalls.h"
#include "DirectfbPainter.h"
#include "LongPressButton.h"

namespace
{

using namespace PEBBLETON;

IDirectFBSurface* primary;
IDirectFBSurface* skin;

// A rectangle at the screen's origin, and the ways to bring it from the skin to the screen.
class RepaintC
{
public:
    RepaintC(int iWidth, int iHeight)
        : mArea{0, 0, iWidth, iHeight}
        , mPitch(pitchOf(mArea, primary))
        , mPixels(static_cast<std::size_t>(mPitch) * static_cast<std::size_t>(iHeight))
        , mCopy(mPixels)
        , mWidget(0, {0, 0, static_cast<std::uint32_t>(iWidth), static_cast<std::uint32_t>(iHeight)})
        , mPainter(*primary, *skin, *skin)
    {
        mPainter.Paint(mWidget); // the first one binds symbols and touches memory
    }

    [[gnu::noinline]] void ByPainter()
    {
        mPainter.Paint(mWidget);
    }

    [[gnu::noinline]] void ByBareCallsAnew()
    {
        copyAnew(mArea, skin, primary);
    }

    // Through a buffer that is there already.
    [[gnu::noinline]] void ByBareCalls()
    {
        copy(mArea, skin, primary, mPitch, mPixels.data());
    }

    [[gnu::noinline]] void ByMemcpy()
    {
        std::memcpy(mCopy.data(), mPixels.data(), mPixels.size());
        benchmark::ClobberMemory();
    }

private:
    DFBRectangle mArea;
    int mPitch;
    std::vector<std::uint8_t> mPixels;
    std::vector<std::uint8_t> mCopy;
    LongPressButtonC mWidget;
    DirectfbPainterC mPainter;
};

[[gnu::noinline]] void repaint(benchmark::State& ioState, void (RepaintC::*iWay)())
{
    RepaintC repaint(static_cast<int>(ioState.range(0)), static_cast<int>(ioState.range(1)));
    while (ioState.KeepRunning()) {
        (repaint.*iWay)();
    }
}

void sizes(benchmark::internal::Benchmark* ioBenchmark)
{
    ioBenchmark->Args({100, 50})->Args({300, 120})->Args({800, 480})->Unit(benchmark::kMicrosecond);
    if (const char* const count = std::getenv("REPAINTS")) {
        ioBenchmark->Iterations(std::atoi(count));
    }
}

BENCHMARK_CAPTURE(repaint, painter, &RepaintC::ByPainter)->Apply(sizes);
BENCHMARK_CAPTURE(repaint, bare_calls_anew, &RepaintC::ByBareCallsAnew)->Apply(sizes);
BENCHMARK_CAPTURE(repaint, bare_calls, &RepaintC::ByBareCalls)->Apply(sizes);
BENCHMARK_CAPTURE(repaint, memcpy, &RepaintC::ByMemcpy)->Apply(sizes);

} // namespace

int main(int argc, char* argv[])
{
    IDirectFB* directfb = nullptr;
    openDisplay(directfb, primary);
    DFBSurfaceDescription description = {};
    check(primary->GetSize(primary, &description.width, &description.height));
    skin = makeSurface(directfb, description);
    check(skin->Clear(skin, 0x10, 0x20, 0x30, 0xff));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
