// Runs commands in turns and prints the medians of their times, and of their ratios to the first
// one by time and by processor time:
//
//   kelp_bench_in_turns RUNS NAME COMMAND NAME COMMAND ...
//
// A command is split at spaces. Words before its program, NAME=VALUE, are added to its environment;
// behind a '<' stands the file of its standard input. The first turn only warms up.

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "bench/child.h"

namespace {

struct Contestant {
    std::string name;
    Command command;
    std::vector<double> seconds;
    std::vector<double> ratios;
    std::vector<double> cpuRatios;
};

Command parsed(const std::string& text) {
    Command command{{}, "/dev/null", {}};
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (word.front() == '<') {
            command.input = word.substr(1);
        } else if (command.arguments.empty() && word.find('=') != std::string::npos) {
            command.environment.push_back(word);
        } else {
            command.arguments.push_back(word);
        }
    }
    return command;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4 || argc % 2 != 0) {
        std::fprintf(stderr, "usage: %s RUNS NAME COMMAND ...\n", argv[0]);
        return 1;
    }
    const int runs = std::atoi(argv[1]);
    std::vector<Contestant> all;
    for (int i = 2; i < argc; i += 2) {
        all.push_back({argv[i], parsed(argv[i + 1]), {}, {}, {}});
    }
    for (int turn = 0; turn <= runs; ++turn) {
        Usage first{};
        for (Contestant& each : all) {
            const Usage usage = run(each.command);
            first = &each == all.data() ? usage : first;
            if (turn > 0) {
                each.seconds.push_back(usage.seconds);
                each.ratios.push_back(usage.seconds / first.seconds);
                each.cpuRatios.push_back(usage.cpuSeconds / first.cpuSeconds);
            }
        }
    }
    std::printf("%-46s %8s %8s %8s\n", "", "ms", "times", "cpu");
    for (const Contestant& each : all) {
        std::printf("%-46s %8.1f %8.2f %8.2f\n", each.name.c_str(), median(each.seconds) * 1e3,
                    median(each.ratios), median(each.cpuRatios));
    }
    return 0;
}
