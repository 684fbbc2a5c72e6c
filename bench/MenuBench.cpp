// What events and themes cost, on a DirectFB that does nothing.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <type_traits>
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

template <typename Widget>
std::unique_ptr<IWidget> makeWidget(Viewer& ioViewer)
{
    const Rectangle rectangle = {100, 100, 100, 50};
    if constexpr (std::is_constructible_v<Widget, std::uint32_t, Viewer*, const Rectangle&>) {
        return std::make_unique<Widget>(0, &ioViewer, rectangle);
    } else {
        return std::make_unique<Widget>(0, rectangle);
    }
}

// One motion offered to every widget, as the program's loop does it. It lies in the columns of every button and below
// all of them, so that each has to make all four comparisons.
template <typename Widget>
void offerEvent(benchmark::State& ioState)
{
    Viewer viewer;
    viewer.Init("", "");
    std::vector<std::unique_ptr<IWidget>> owned;
    std::vector<IWidget*> widgets;
    for (std::int64_t i = 0; i < ioState.range(0); ++i) {
        owned.push_back(makeWidget<Widget>(viewer));
        widgets.push_back(owned.back().get());
    }
    const InputEvent event = {150, 300, EventType::Move};
    for (auto _ : ioState) {
        for (IWidget* widget : widgets) {
            if (widget->HandleEvent(event)) {
                std::abort();
            }
        }
    }
    ioState.counters["per_widget"] =
        benchmark::Counter(static_cast<double>(ioState.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK_TEMPLATE(offerEvent, ButtonC)->Name("event/button")->RangeMultiplier(10)->Range(1, 10000);
BENCHMARK_TEMPLATE(offerEvent, LongPressButtonC)->Name("event/long_press")->RangeMultiplier(10)->Range(1, 10000);
BENCHMARK_TEMPLATE(offerEvent, BareWidget)->Name("event/bare_call")->RangeMultiplier(10)->Range(1, 10000);

// A theme file with that many buttons of one kind, gone with the object.
class ThemeC
{
public:
    ThemeC(const char* iSection, std::int64_t iEntries)
        : mPath(std::filesystem::temp_directory_path() / ("pebbleton-bench-" + std::to_string(getpid()) + ".conf"))
    {
        std::ofstream file(mPath);
        file << "image\n{\n    normal normal.png\n    pressed pressed.png\n}\n";
        for (const char* section : {"button_long_press", "button_normal"}) {
            file << section << "\n{\n";
            for (std::int64_t i = 0; std::string(section) == iSection && i < iEntries; ++i) {
                file << "    button " << i % 128 << ':' << i % 700 << ':' << i % 430 << ":100:50\n";
            }
            file << "}\n";
        }
    }
    ~ThemeC()
    {
        std::filesystem::remove(mPath);
    }
    ThemeC(const ThemeC&) = delete;
    ThemeC& operator=(const ThemeC&) = delete;

    const char* GetPath() const
    {
        return mPath.c_str();
    }

private:
    std::filesystem::path mPath;
};

// From file to widgets. Giving the widgets back is not part of it.
void readTheme(benchmark::State& ioState, const char* iSection)
{
    const ThemeC theme(iSection, ioState.range(0));
    while (ioState.KeepRunning()) {
        auto application = std::make_unique<ApplicationC>(theme.GetPath());
        if (!application->Init()) {
            ioState.SkipWithError("the theme is not accepted");
        }
        ioState.PauseTiming();
        application.reset();
        ioState.ResumeTiming();
    }
}

// The least that it can take: the libraries' own part of it, with and without the numbers that sscanf reads.
void readInfo(benchmark::State& ioState, bool iNumbersToo)
{
    const char* section = "button_normal";
    const ThemeC theme(section, ioState.range(0));
    while (ioState.KeepRunning()) {
        boost::property_tree::ptree tree;
        boost::property_tree::read_info(std::string(theme.GetPath()), tree);
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
}

BENCHMARK_CAPTURE(readTheme, push, "button_normal")->Name("theme/push")->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(readTheme, longPress, "button_long_press")->Name("theme/long_press")->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(readInfo, alone, false)->Name("theme/read_info")->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(readInfo, numbers, true)->Name("theme/read_info_and_sscanf")->Arg(10)->Arg(1000)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
