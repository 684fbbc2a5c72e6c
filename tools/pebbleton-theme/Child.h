#ifndef PEBBLETON_CHILD_H
#define PEBBLETON_CHILD_H

#include <functional>
#include <string>
#include <vector>

namespace PEBBLETON
{

// How a child process ended, and what it left.
struct ChildEnd {
    int status; // its exit status
    int signal; // the one that ended it; 0: none
    std::string output;
    std::vector<std::string> messages; // the lines of its standard output and error
};

// Runs iWork in a process of its own, with a file to write its output to, until it ends. Its result is that process's
// exit status; no destructor and no exit handler runs in it. Throws std::runtime_error when there can be no such
// process.
ChildEnd runChild(const std::function<int(int iOutput)>& iWork);

} // namespace PEBBLETON

#endif
