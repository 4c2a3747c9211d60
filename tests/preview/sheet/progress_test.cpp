// The line that tells how far the work is.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "tests/preview/decoded.h"
#include "tests/preview/sheet/sheet_program.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

using kelp_test::Arguments;
using kelp_test::Descriptor;

constexpr int columns = 40;
constexpr auto patience = std::chrono::seconds(60);

struct Ends {
    Descriptor ours;
    Descriptor child;
};

Ends make_pipe(bool we_read) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    return we_read ? Ends{Descriptor(ends[0]), Descriptor(ends[1])}
                   : Ends{Descriptor(ends[1]), Descriptor(ends[0])};
}

Ends make_terminal() {
    winsize size{24, columns, 0, 0};
    int ours = -1;
    int child = -1;
    EXPECT_EQ(openpty(&ours, &child, nullptr, nullptr, &size), 0);
    fcntl(ours, F_SETFD, FD_CLOEXEC);
    fcntl(child, F_SETFD, FD_CLOEXEC);
    return {Descriptor(ours), Descriptor(child)};
}

// kelp-preview at work, with a terminal or a pipe for its standard error.
class Running {
  public:
    Running(const Arguments& arguments, const std::string& folder, bool terminal)
        : input_(make_pipe(false)),
          output_(make_pipe(true)),
          error_(terminal ? make_terminal() : make_pipe(true)) {
        std::signal(SIGPIPE, SIG_IGN);
        std::vector<std::string> words{KELP_PREVIEW};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        child_ = fork();
        if (child_ == 0) {
            dup2(input_.child.get(), 0);
            dup2(output_.child.get(), 1);
            dup2(error_.child.get(), 2);
            if (chdir(folder.c_str()) == 0) {
                execv(KELP_PREVIEW, pointers.data());
            }
            _exit(127);
        }
        input_.child.reset();
        output_.child.reset();
        error_.child.reset();
    }
    ~Running() {
        if (child_ > 0) {
            kill(child_, SIGKILL);
            waitpid(child_, nullptr, 0);
        }
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    void feed(const std::string& bytes) const {
        EXPECT_EQ(write(input_.ours.get(), bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
    }
    // Takes in what there is, for a little while at most.
    void listen() {
        std::array<pollfd, 2> ends{
            {{output_.ours.get(), POLLIN, 0}, {error_.ours.get(), POLLIN, 0}}};
        poll(ends.data(), ends.size(), 20);
        if (ends[0].revents != 0) {
            take(output_.ours, output);
        }
        if (ends[1].revents != 0) {
            take(error_.ours, error);
        }
    }
    int end() {
        input_.ours.reset();
        const auto deadline = std::chrono::steady_clock::now() + patience;
        while ((output_.ours.is_open() || error_.ours.is_open()) &&
               std::chrono::steady_clock::now() < deadline) {
            listen();
        }
        EXPECT_FALSE(output_.ours.is_open()) << "it does not end";
        int status = -1;
        if (!output_.ours.is_open()) {
            waitpid(child_, &status, 0);
            child_ = 0;
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string output;
    std::string error;

  private:
    static void take(Descriptor& from, std::string& text) {
        std::array<char, 4096> buffer;
        const ssize_t count = read(from.get(), buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else {
            from.reset();  // a terminal that nobody has open gives an error
        }
    }

    Ends input_;
    Ends output_;
    Ends error_;
    pid_t child_ = 0;
};

const std::string taken_away = "\r\033[K";

class ProgressLine : public kelp_test::SheetProgram {
  protected:
    // Feeds line ends, which mean nothing, until `enough`.
    template <typename Enough>
    void feed_slowly(Running& running, Enough enough) {
        const auto deadline = std::chrono::steady_clock::now() + patience;
        while (!enough() && std::chrono::steady_clock::now() < deadline) {
            running.feed("\n");
            running.listen();
        }
        EXPECT_TRUE(enough());
    }
    const std::string label = kelp_test::block(2, 1, "80C1");
};

TEST_F(ProgressLine, IsOnATerminalForLongWorkAndTakenAway) {
    Running running({"show", "-"}, dir.path(), true);
    feed_slowly(running, [&] { return running.error.find("\033[K") != std::string::npos; });
    running.feed(label);
    EXPECT_EQ(running.end(), 0);
    EXPECT_TRUE(running.error.starts_with("\r0.0 MB of standard input decoded\033[K"))
        << testing::PrintToString(running.error);
    EXPECT_TRUE(running.error.ends_with(taken_away)) << testing::PrintToString(running.error);
    EXPECT_TRUE(running.output.starts_with("Label 1\n")) << running.output;
    EXPECT_EQ(running.output.find("MB"), std::string::npos);
}

TEST_F(ProgressLine, IsTakenAwayBeforeAnError) {
    Running running({"show", "-"}, dir.path(), true);
    feed_slowly(running, [&] { return running.error.find("\033[K") != std::string::npos; });
    running.feed("^XX~DGA,0,1,");
    EXPECT_EQ(running.end(), 1);
    const std::size_t message = running.error.find("kelp-preview: ");
    ASSERT_NE(message, std::string::npos);
    EXPECT_TRUE(running.error.substr(0, message).ends_with(taken_away));
    EXPECT_EQ(running.error.find('\033', message), std::string::npos);
    EXPECT_EQ(running.output, "");
}

TEST_F(ProgressLine, IsNowhereElseThanOnATerminal) {
    Running running({"show", "-"}, dir.path(), false);
    // Twice as long as a terminal would have to wait for it.
    const auto enough = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    feed_slowly(running, [&] { return std::chrono::steady_clock::now() >= enough; });
    running.feed(label);
    EXPECT_EQ(running.end(), 0);
    EXPECT_EQ(running.error, "");
    EXPECT_TRUE(running.output.starts_with("Label 1\n"));
}

TEST_F(ProgressLine, OfALongNameStaysOnALineAndCommandsNothing) {
    // Draws for more than a second.
    const std::string name = "\033[31m" + std::string(100, 'n') + ".ps";
    kelp_test::write_file(
        dir / name, "%!PS\nusertime 2500 add { dup usertime lt { exit } if } loop showpage\n");
    Running running({"sheet", name, "--page", "80x60", "--halftone", "None", "-o", "out.png"},
                    dir.path(), true);
    EXPECT_EQ(running.end(), 0) << running.error;
    EXPECT_TRUE(running.error.starts_with("\rdrawing \\x1B[31mnnn"))
        << testing::PrintToString(running.error);
    EXPECT_TRUE(running.error.ends_with(taken_away)) << testing::PrintToString(running.error);
    for (std::size_t begin = 0; begin < running.error.size();) {
        const std::size_t end = running.error.find("\033[K", begin);
        ASSERT_NE(end, std::string::npos);
        EXPECT_LT(end - begin - 1, static_cast<std::size_t>(columns));
        EXPECT_EQ(running.error.find('\033', begin), end);
        begin = end + 3;
    }
    EXPECT_TRUE(running.output.starts_with("HalftoneType ")) << running.output;
    EXPECT_EQ(running.output.find("drawing"), std::string::npos);
}

}  // namespace
