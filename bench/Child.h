#ifndef PEBBLETON_BENCH_CHILD_H
#define PEBBLETON_BENCH_CHILD_H

#include <vector>

#include <sys/types.h>

// A program that is run to be measured.

// What it took.
struct Usage {
    double cpu;  // milliseconds, user and system
    double peak; // KiB resident
    int status;  // as waitpid tells it
};

// Starts it with its input and its output going nowhere. iCommand ends with a null pointer, as for exec. What cannot be
// started ends with the exit status 127.
pid_t start(char* const iCommand[]);

// Waits for its end.
Usage finish(pid_t iChild);

// The value below which that share of the values lies; 0.5 gives the median. There must be one value at least.
double quantile(std::vector<double> iValues, double iShare);

#endif
