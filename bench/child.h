#ifndef KELP_BENCH_CHILD_H
#define KELP_BENCH_CHILD_H

#include <string>
#include <vector>

/// A program to be measured as a process.
struct Command {
    std::vector<std::string> arguments;    ///< the program first, looked up in PATH
    std::string input;                     ///< the file on its standard input
    std::vector<std::string> environment;  ///< what it has besides our own, NAME=VALUE
};

struct Usage {
    double seconds;     ///< from its start to its end
    double cpuSeconds;  ///< of the processor
    long peakBytes;     ///< most memory that was resident
};

/// Runs it with its output thrown away; ends this program when it fails.
Usage run(const Command& command);

double median(std::vector<double> values);

#endif
