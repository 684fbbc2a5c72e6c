// repaint-count WAY WIDTH HEIGHT COUNT: that many repaints, for a tool that counts what they take; see repaintCounted.

#include <cstdlib>
#include <cstring>

#include "Repaint.h"

namespace
{

using PEBBLETON::RepaintC;

struct Way {
    const char* name;
    void (RepaintC::*repaint)();
};

constexpr Way ways[] = {
    {"painter", &RepaintC::ByPainter},
    {"bare_calls", &RepaintC::ByBareCalls},
    {"bare_calls_anew", &RepaintC::ByBareCallsAnew},
};

} // namespace

// Counting starts where this function is entered and ends where it returns, so it has to stay a function.
// cppcheck-suppress constParameter ; what is called through the pointer changes it
extern "C" __attribute__((noinline)) void repaintCounted(RepaintC& ioRepaint, const Way& iWay, int iCount)
{
    for (int i = 0; i < iCount; ++i) {
        (ioRepaint.*iWay.repaint)();
    }
}

int main(int argc, char* argv[])
{
    if (argc != 5) {
        return EXIT_FAILURE;
    }
    for (const Way& way : ways) {
        if (std::strcmp(way.name, argv[1]) == 0) {
            RepaintC repaint(static_cast<std::uint32_t>(std::atoi(argv[2])),
                             static_cast<std::uint32_t>(std::atoi(argv[3])));
            (repaint.*way.repaint)(); // the first call binds symbols and touches memory
            repaintCounted(repaint, way, std::atoi(argv[4]));
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
