// pair-runs COUNT STATUS PROGRAM [ARGUMENT...] -- PROGRAM [ARGUMENT...]
//
// Runs the two programs in turn, COUNT times each, and prints as JSON what they took (medians) and the median and the
// quartiles of the ratio, the first program's figure over the second's, pair by pair: what disturbs the machine
// disturbs both of a pair. Every other pair runs in the opposite order. A program that ends in another way than with
// the exit status STATUS ends the measurement.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <sys/wait.h>

#include "Child.h"

namespace
{

// One figure of the two programs, run by run.
struct Series {
    const char* name;
    std::vector<double> values[2];
};

// What is measured, of runs that end with this exit status.
struct Comparison {
    int status;
    Series wall = {"wall_ms", {}};
    Series cpu = {"cpu_ms", {}};
    Series peak = {"peak_kib", {}};
};

[[noreturn]] void giveUp(const char* iReason)
{
    std::fprintf(stderr, "pair-runs: %s\n", iReason);
    std::exit(EXIT_FAILURE);
}

void run(Comparison& ioComparison, int iProgram, char* const iCommand[])
{
    const auto begin = std::chrono::steady_clock::now();
    const Usage usage = finish(start(iCommand));
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(usage.status) || WEXITSTATUS(usage.status) != ioComparison.status) {
        giveUp("a program does not end as it should");
    }
    ioComparison.wall.values[iProgram].push_back(wall.count());
    ioComparison.cpu.values[iProgram].push_back(usage.cpu);
    ioComparison.peak.values[iProgram].push_back(usage.peak);
}

Comparison compare(int iPairs, int iStatus, char* const* const iCommands[2])
{
    Comparison warmUp = {iStatus}; // so that neither reads from the disk
    run(warmUp, 0, iCommands[0]);
    run(warmUp, 1, iCommands[1]);
    Comparison comparison = {iStatus};
    for (int i = 0; i < iPairs; ++i) {
        const int leader = i % 2;
        run(comparison, leader, iCommands[leader]);
        run(comparison, 1 - leader, iCommands[1 - leader]);
    }
    return comparison;
}

void print(const Series& iSeries)
{
    const std::vector<double>& first = iSeries.values[0];
    const std::vector<double>& second = iSeries.values[1];
    std::vector<double> ratios(first.size());
    std::transform(first.begin(), first.end(), second.begin(), ratios.begin(), std::divides<>());
    std::printf("  \"%s\": {\"first\": %.3f, \"second\": %.3f, \"ratio\": %.4f, \"quartiles\": [%.4f, %.4f]},\n",
                iSeries.name, quantile(first, 0.5), quantile(second, 0.5), quantile(ratios, 0.5),
                quantile(ratios, 0.25), quantile(ratios, 0.75));
}

} // namespace

int main(int argc, char* argv[])
{
    char** const end = argv + argc;
    char** const dashes = std::find_if(argv, end, [](const char* iWord) { return std::strcmp(iWord, "--") == 0; });
    const int pairs = argc > 1 ? std::atoi(argv[1]) : 0;
    if (pairs < 1 || dashes - argv < 4 || end - dashes < 2) {
        giveUp("usage: pair-runs COUNT STATUS PROGRAM [ARGUMENT...] -- PROGRAM [ARGUMENT...]");
    }
    *dashes = nullptr;
    char* const* const commands[] = {argv + 3, dashes + 1};

    const Comparison comparison = compare(pairs, std::atoi(argv[2]), commands);
    std::puts("{");
    print(comparison.wall);
    print(comparison.cpu);
    print(comparison.peak);
    std::printf("  \"pairs\": %d,\n  \"status\": %d\n}\n", pairs, comparison.status);
    return EXIT_SUCCESS;
}
