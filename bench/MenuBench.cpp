// What events and themes cost, on a DirectFB that does nothing.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#include <benchmark/benchmark.h>
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "Application.h"
#include "Button.h"
#include "LongPressButton.h"
#include "Viewer.h"

namespace
{

using namespace PEBBLETON;

// The cheapest thing that can stand in the list: a virtual call that does nothing, on an object of a button's size.
class BareWidget : public ButtonC
{
public:
    using ButtonC::ButtonC;

    bool HandleEvent(const InputEvent& /*iEvent*/) override
    {
        return false;
    }
};

// One motion offered to every widget, as the program's loop does it. It lies in the columns of every button and below
// all of them, so that each has to make all four comparisons. A widget that draws itself wants a viewer.
template <typename Widget, typename... MaybeViewer>
void offerEvent(benchmark::State& ioState)
{
    Viewer viewer;
    viewer.Init("", "");
    const Rectangle rectangle = {100, 100, 100, 50};
    std::vector<std::unique_ptr<IWidget>> widgets;
    for (std::int64_t i = 0; i < ioState.range(0); ++i) {
        widgets.push_back(std::make_unique<Widget>(0, static_cast<MaybeViewer*>(&viewer)..., rectangle));
    }
    const InputEvent event = {150, 300, EventType::Move};
    for (auto _ : ioState) {
        for (const auto& widget : widgets) {
            if (widget->HandleEvent(event)) {
                std::abort();
            }
        }
    }
}

BENCHMARK_TEMPLATE(offerEvent, ButtonC, Viewer)->Name("event/button")->RangeMultiplier(10)->Range(1, 10000);
BENCHMARK_TEMPLATE(offerEvent, LongPressButtonC)->Name("event/long_press")->RangeMultiplier(10)->Range(1, 10000);
BENCHMARK_TEMPLATE(offerEvent, BareWidget, Viewer)->Name("event/bare_call")->RangeMultiplier(10)->Range(1, 10000);

// Makes a theme file with that many buttons of one kind. Whoever asks for it removes it.
std::string writeTheme(const std::string& iSection, std::int64_t iEntries)
{
    std::string path = "/tmp/pebbleton-bench-" + std::to_string(getpid()) + ".conf";
    std::ofstream file(path);
    file << "image\n{\n    normal normal.png\n    pressed pressed.png\n}\n";
    for (const char* section : {"button_long_press", "button_normal"}) {
        file << section << "\n{\n";
        for (std::int64_t i = 0; section == iSection && i < iEntries; ++i) {
            file << "    button " << i % 128 << ':' << i % 700 << ':' << i % 430 << ":100:50\n";
        }
        file << "}\n";
    }
    return path;
}

// From file to widgets. Giving the widgets back is not part of it.
void readTheme(benchmark::State& ioState, const char* iSection)
{
    const std::string theme = writeTheme(iSection, ioState.range(0));
    while (ioState.KeepRunning()) {
        auto application = std::make_unique<ApplicationC>(theme.c_str());
        if (!application->Init()) {
            ioState.SkipWithError("the theme is not accepted");
        }
        ioState.PauseTiming();
        application.reset();
        ioState.ResumeTiming();
    }
    std::remove(theme.c_str());
}

// The least that it can take: the libraries' own part of it, with and without the numbers that sscanf reads.
void readInfo(benchmark::State& ioState, bool iNumbersToo)
{
    const char* section = "button_normal";
    const std::string theme = writeTheme(section, ioState.range(0));
    while (ioState.KeepRunning()) {
        boost::property_tree::ptree tree;
        boost::property_tree::read_info(theme, tree);
        if (iNumbersToo) {
            for (const auto& child : tree.get_child(section)) {
                std::uint32_t code = 0;
                Rectangle rectangle = {};
                benchmark::DoNotOptimize(ReadButtonEntry(child.second.data(), code, rectangle));
            }
        }
        ioState.PauseTiming(); // as readTheme does, so that both pay for it
        ioState.ResumeTiming();
    }
    std::remove(theme.c_str());
}

void sizes(benchmark::internal::Benchmark* ioBenchmark)
{
    ioBenchmark->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(readTheme, push, "button_normal")->Apply(sizes);
BENCHMARK_CAPTURE(readTheme, long_press, "button_long_press")->Apply(sizes);
BENCHMARK_CAPTURE(readInfo, read_info, false)->Apply(sizes);
BENCHMARK_CAPTURE(readInfo, read_info_and_sscanf, true)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
