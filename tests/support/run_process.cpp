#include "tests/support/run_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include "tests/support/descriptor.h"

namespace kelp_test {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

Descriptor checked(int number, const std::string& what) {
    if (number < 0) {
        fail(what);
    }
    return Descriptor(number);
}

// Readable once the process has ended. Called directly: glibc 2.36 declares it for C only.
Descriptor open_process(pid_t process) {
    return checked(static_cast<int>(syscall(SYS_pidfd_open, process, 0)), "pidfd_open");
}

struct Pipe {
    Descriptor read_end;
    Descriptor write_end;
};

Pipe make_pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        fail("pipe");
    }
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

void make_nonblocking(const Descriptor& descriptor) {
    if (descriptor.is_open()) {
        fcntl(descriptor.get(), F_SETFL, O_NONBLOCK);
    }
}

// The ends of one standard stream: the child's, and ours when it is a pipe.
struct Stream {
    Descriptor child;
    Descriptor ours;
};

Stream open_input(const StandardInput& input) {
    if (std::holds_alternative<FromBytes>(input)) {
        Pipe pipe = make_pipe();
        return {std::move(pipe.read_end), std::move(pipe.write_end)};
    }
    if (const auto* file = std::get_if<FromFile>(&input)) {
        return {checked(open(file->path.c_str(), O_RDONLY | O_CLOEXEC), file->path), {}};
    }
    return {};
}

Stream open_captured() {
    Pipe pipe = make_pipe();
    return {std::move(pipe.write_end), std::move(pipe.read_end)};
}

Stream open_output(const StandardOutput& output) {
    if (std::holds_alternative<Captured>(output)) {
        return open_captured();
    }
    if (const auto* file = std::get_if<ToFile>(&output)) {
        const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
        return {checked(open(file->path.c_str(), flags, 0600), file->path), {}};
    }
    if (std::holds_alternative<BrokenPipe>(output)) {
        return {std::move(make_pipe().write_end), {}};
    }
    return {};
}

void place(const Descriptor& descriptor, int number) {
    if (descriptor.is_open()) {
        dup2(descriptor.get(), number);
    } else {
        close(number);
    }
}

// In the child, between fork and exec: system calls only. Returns when something failed.
void become(const Command& command, const std::array<Stream, 3>& streams, char* const* arguments,
            char* const* environment) {
    std::signal(SIGPIPE, command.ignore_broken_pipe_signal ? SIG_IGN : SIG_DFL);
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    for (const ResourceLimit& limit : command.limits) {
        const rlimit value{limit.value, limit.value};
        if (setrlimit(static_cast<__rlimit_resource_t>(limit.resource), &value) != 0) {
            return;
        }
    }
    if (chdir(command.working_directory.c_str()) != 0) {
        return;
    }
    for (int number = 0; number < 3; ++number) {
        place(streams[static_cast<std::size_t>(number)].child, number);
    }
    execve(command.program.c_str(), arguments, environment);
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

// Forks and execs; a failure in the child comes back as its errno through a pipe.
pid_t start(const Command& command, const std::array<Stream, 3>& streams) {
    std::vector<std::string> arguments{command.name.value_or(command.program.string())};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    std::vector<std::string> environment;
    for (const auto& [name, value] : command.environment) {
        environment.push_back(name + "=" + value);
    }
    const std::vector<char*> argument_pointers = pointers(arguments);
    const std::vector<char*> environment_pointers = pointers(environment);

    Pipe report = make_pipe();
    const pid_t child = fork();
    if (child < 0) {
        fail("fork");
    }
    if (child == 0) {
        become(command, streams, argument_pointers.data(), environment_pointers.data());
        const int error = errno;
        [[maybe_unused]] const ssize_t sent = write(report.write_end.get(), &error, sizeof(error));
        _exit(127);
    }
    report.write_end.reset();
    int error = 0;
    if (read(report.read_end.get(), &error, sizeof(error)) > 0) {
        waitpid(child, nullptr, 0);
        throw std::system_error(error, std::generic_category(), command.program.string());
    }
    return child;
}

// Moves what is ready from the pipe into the text; closes the pipe at its end.
void drain(Descriptor& from, std::string& text) {
    std::array<char, 65536> buffer;
    while (from.is_open()) {
        const ssize_t count = read(from.get(), buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else if (count < 0 && errno == EAGAIN) {
            return;
        } else {
            from.reset();
        }
    }
}

// Writes what the pipe takes; closes it when all is written or nobody reads.
void feed(Descriptor& to, const std::string& bytes, std::size_t& position) {
    while (to.is_open()) {
        const ssize_t count = position < bytes.size() ? write(to.get(), bytes.data() + position,
                                                              bytes.size() - position)
                                                      : 0;
        if (count > 0) {
            position += static_cast<std::size_t>(count);
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else if (count < 0 && errno == EAGAIN) {
            return;
        } else {
            to.reset();
        }
    }
}

int milliseconds_until(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, 1'000'000));
}

// Serves the pipes until the child has ended or the deadline has passed. False on the latter.
bool serve(const Descriptor& child_ended, std::array<Stream, 3>& streams, const std::string& input,
           Clock::time_point deadline, ProcessResult& result) {
    std::size_t fed = 0;
    while (true) {
        feed(streams[0].ours, input, fed);
        std::array<pollfd, 4> events{{{child_ended.get(), POLLIN, 0},
                                      {streams[0].ours.get(), POLLOUT, 0},
                                      {streams[1].ours.get(), POLLIN, 0},
                                      {streams[2].ours.get(), POLLIN, 0}}};
        const int count = poll(events.data(), events.size(), milliseconds_until(deadline));
        if (count < 0 && errno != EINTR) {
            fail("poll");
        }
        // Looked at before the pipes are drained, so that nothing written before the end is lost.
        const bool ended = (events[0].revents & POLLIN) != 0;
        drain(streams[1].ours, result.output);
        drain(streams[2].ours, result.error);
        if (ended) {
            return true;
        }
        if (Clock::now() >= deadline) {
            return false;
        }
    }
}

}  // namespace

std::string ProcessResult::ending() const {
    if (timed_out) {
        return "killed at its time limit";
    }
    if (exit_status) {
        return "exit status " + std::to_string(*exit_status);
    }
    return "ended by signal " + std::to_string(signal);
}

ProcessResult run_process(const Command& command) {
    // Writing to a child that no longer reads must not end the test program.
    std::signal(SIGPIPE, SIG_IGN);

    std::array<Stream, 3> streams{
        open_input(command.input), open_output(command.output),
        std::holds_alternative<Captured>(command.error) ? open_captured() : Stream{}};
    const Clock::time_point deadline = Clock::now() + command.time_limit;
    const pid_t child = start(command, streams);
    const Descriptor child_ended = open_process(child);
    for (Stream& stream : streams) {
        stream.child.reset();
        make_nonblocking(stream.ours);
    }

    ProcessResult result;
    const auto* bytes = std::get_if<FromBytes>(&command.input);
    if (!serve(child_ended, streams, bytes != nullptr ? bytes->bytes : std::string(), deadline,
               result)) {
        result.timed_out = true;
        kill(child, SIGKILL);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    drain(streams[1].ours, result.output);
    drain(streams[2].ours, result.error);
    result.peak_resident_kib = usage.ru_maxrss;
    if (WIFEXITED(status)) {
        result.exit_status = WEXITSTATUS(status);
    } else {
        result.signal = WTERMSIG(status);
    }
    return result;
}

}  // namespace kelp_test
