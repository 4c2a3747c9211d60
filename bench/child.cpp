#include "bench/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (std::string& text : texts) {
        all.push_back(text.data());
    }
    all.push_back(nullptr);
    return all;
}

std::vector<std::string> environmentOf(const Command& command) {
    std::vector<std::string> environment = command.environment;  // the first of a name counts
    for (char** entry = environ; *entry != nullptr; ++entry) {
        environment.emplace_back(*entry);
    }
    return environment;
}

}  // namespace

Usage run(const Command& command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, command.input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::vector<std::string> arguments = command.arguments;
    std::vector<std::string> environment = environmentOf(command);
    const std::vector<char*> argv = pointers(arguments);
    const std::vector<char*> envp = pointers(environment);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), envp.data());
    rusage usage{};
    if (status == 0) {
        wait4(child, &status, 0, &usage);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::fprintf(stderr, "%s did not end with status 0\n", argv[0]);
        std::exit(1);
    }
    return {elapsed.count(), secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime),
            usage.ru_maxrss * 1024};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
