#include "filter/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace kelp_test {
namespace {

// Each of these runs in a child process that may do with its streams as it likes. The child ends
// with status 0 when all is well, else with the number of what is not.

void end(int status) {
    std::_Exit(status);
}

bool is_open(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

void forbid_descriptors() {
    const rlimit none{0, 0};
    setrlimit(RLIMIT_NOFILE, &none);
}

TEST(StandardStreams, ClosedDescriptorsAreFilled) {
    EXPECT_EXIT(
        {
            close(0);
            close(1);
            close(2);
            secureStandardStreams();
            end((is_open(0) ? 0 : 1) + (is_open(1) ? 0 : 2) + (is_open(2) ? 0 : 4));
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, AFileOpenedLaterDoesNotBecomeAStandardStream) {
    for (const int closed : {0, 1, 2}) {
        EXPECT_EXIT(
            {
                close(closed);
                secureStandardStreams();
                end(open("/dev/null", O_RDONLY) > 2 ? 0 : 1);
            },
            testing::ExitedWithCode(0), "");
    }
}

TEST(StandardStreams, WhatCannotBeFilledEndsTheProcess) {
    for (const int closed : {0, 1, 2}) {
        EXPECT_EXIT(
            {
                close(closed);
                forbid_descriptors();
                secureStandardStreams();
                end(0);
            },
            testing::ExitedWithCode(1), "");
    }
}

TEST(StandardStreams, AFilledStandardInputCannotBeRead) {
    EXPECT_EXIT(
        {
            close(0);
            secureStandardStreams();
            char byte = 0;
            end(read(0, &byte, 1) == -1 && errno == EBADF ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, FilledOutputsCannotBeWritten) {
    EXPECT_EXIT(
        {
            close(1);
            close(2);
            secureStandardStreams();
            const bool output_fails = write(1, "x", 1) == -1 && errno == EBADF;
            const bool error_fails = write(2, "x", 1) == -1 && errno == EBADF;
            end((output_fails ? 0 : 1) + (error_fails ? 0 : 2));
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, OpenOnesAreLeftAsTheyAre) {
    EXPECT_EXIT(
        {
            int ends[2];
            if (pipe(ends) != 0) {
                end(9);
            }
            dup2(ends[0], 0);
            dup2(ends[1], 1);
            secureStandardStreams();
            char byte = 0;
            const bool works = write(1, "x", 1) == 1 && read(0, &byte, 1) == 1 && byte == 'x';
            end(works ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, AReaderThatGoesAwayMakesWritingFail) {
    EXPECT_EXIT(
        {
            secureStandardStreams();
            int ends[2];
            if (pipe(ends) != 0) {
                end(9);
            }
            close(ends[0]);
            end(write(ends[1], "x", 1) == -1 && errno == EPIPE ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(StandardStreams, ALineOfStandardErrorIsWrittenWholeAndAtOnce) {
    // A new process: how a stream is buffered is settled when it is first used.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            int ends[2];
            if (pipe2(ends, O_NONBLOCK) != 0) {
                end(9);
            }
            dup2(ends[1], 2);
            secureStandardStreams();
            char line[16];
            std::fputs("half", stderr);
            const bool held_back = read(ends[0], line, sizeof line) == -1 && errno == EAGAIN;
            std::fputs(" a line\n", stderr);
            const bool sent = read(ends[0], line, sizeof line) == 12;
            end((held_back ? 0 : 1) + (sent ? 0 : 2));
        },
        testing::ExitedWithCode(0), "");
}

// Standard output becomes the file of this name.
void redirect_output(const char* path) {
    std::fflush(stdout);
    const int file = open(path, O_WRONLY);
    dup2(file, 1);
    close(file);
}

TEST(FinishStandardOutput, KeepsTheStatusWhenAllWasWritten) {
    EXPECT_EXIT(
        {
            redirect_output("/dev/null");
            std::fputs("printer data", stdout);
            end(finishStandardOutput(0));
        },
        testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(
        {
            redirect_output("/dev/null");
            std::fputs("printer data", stdout);
            end(finishStandardOutput(7));
        },
        testing::ExitedWithCode(7), "^$");
}

TEST(FinishStandardOutput, FlushesWhatIsHeldBack) {
    EXPECT_EXIT(
        {
            int ends[2];
            if (pipe(ends) != 0) {
                end(9);
            }
            std::fflush(stdout);
            dup2(ends[1], 1);
            std::fputs("x", stdout);
            finishStandardOutput(0);
            close(ends[1]);
            close(1);
            char byte = 0;
            end(read(ends[0], &byte, 1) == 1 && byte == 'x' ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(FinishStandardOutput, ReportsDataThatIsLostInTheEnd) {
    EXPECT_EXIT(
        {
            redirect_output("/dev/full");
            std::fputs("printer data", stdout);
            end(finishStandardOutput(0));
        },
        testing::ExitedWithCode(1), "^ERROR:[^\n]+\n$");
}

TEST(FinishStandardOutput, ReportsDataThatWasLostBefore) {
    EXPECT_EXIT(
        {
            redirect_output("/dev/full");
            std::fputs("printer data", stdout);
            std::fflush(stdout);
            redirect_output("/dev/null");
            end(finishStandardOutput(0));
        },
        testing::ExitedWithCode(1), "^ERROR:[^\n]+\n$");
}

TEST(FinishStandardOutput, AJobThatFailedAnywayKeepsAStatusOfFailure) {
    EXPECT_EXIT(
        {
            redirect_output("/dev/full");
            std::fputs("printer data", stdout);
            end(finishStandardOutput(1));
        },
        testing::ExitedWithCode(1), "^ERROR:[^\n]+\n$");
}

TEST(FinishStandardOutput, WithNothingPrintedThereIsNothingLost) {
    EXPECT_EXIT(
        {
            redirect_output("/dev/full");
            end(finishStandardOutput(0));
        },
        testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace kelp_test
