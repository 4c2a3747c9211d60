// Runs commands in turns and prints the medians of their times, and their ratios to the first one:
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
        all.push_back({argv[i], parsed(argv[i + 1]), {}, {}});
    }
    for (int turn = 0; turn <= runs; ++turn) {
        double first = 0.0;
        for (Contestant& each : all) {
            const double seconds = run(each.command).seconds;
            first = &each == all.data() ? seconds : first;
            if (turn > 0) {
                each.seconds.push_back(seconds);
                each.ratios.push_back(seconds / first);
            }
        }
    }
    for (const Contestant& each : all) {
        std::printf("%-44s %8.1f ms %7.2f times\n", each.name.c_str(), median(each.seconds) * 1e3,
                    median(each.ratios));
    }
    return 0;
}
