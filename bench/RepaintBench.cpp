// How long a repaint takes on the real DirectFB, beside what DirectFB and memory allow. DFBARGS chooses the screen.

#include <benchmark/benchmark.h>

#include "Repaint.h"

namespace
{

using PEBBLETON::RepaintC;

template <void (RepaintC::*way)()>
void repaint(benchmark::State& ioState)
{
    RepaintC repaint(static_cast<std::uint32_t>(ioState.range(0)), static_cast<std::uint32_t>(ioState.range(1)));
    for (auto _ : ioState) {
        (repaint.*way)();
        benchmark::ClobberMemory();
    }
    ioState.SetBytesProcessed(static_cast<std::int64_t>(repaint.GetByteCount()) * ioState.iterations());
    ioState.SetLabel(std::to_string(repaint.GetBitsPerPixel()) + " bits per pixel");
}

void sizes(benchmark::internal::Benchmark* ioBenchmark)
{
    ioBenchmark->Args({100, 50})->Args({300, 120})->Args({800, 480});
}

BENCHMARK_TEMPLATE(repaint, &RepaintC::ByPainter)->Name("painter")->Apply(sizes);
BENCHMARK_TEMPLATE(repaint, &RepaintC::ByBareCalls)->Name("bare_calls")->Apply(sizes);
BENCHMARK_TEMPLATE(repaint, &RepaintC::ByBareCallsAnew)->Name("bare_calls_anew")->Apply(sizes);
BENCHMARK_TEMPLATE(repaint, &RepaintC::ByMemcpy)->Name("memcpy")->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
