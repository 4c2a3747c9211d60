#include "filter/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace {

// What someone else does as an old file makes way.
struct Meanwhile {
    std::function<void()> before_look{};
    std::function<void()> before_removal{};
    std::function<void()> after_removal{};
} meanwhile;

}  // namespace

extern "C" {
int __real_lstat(const char* path, struct stat* status);
int __wrap_lstat(const char* path, struct stat* status);
int __real_unlink(const char* path);
int __wrap_unlink(const char* path);

int __wrap_lstat(const char* path, struct stat* status) {
    if (meanwhile.before_look) {
        meanwhile.before_look();
    }
    return __real_lstat(path, status);
}

int __wrap_unlink(const char* path) {
    if (meanwhile.before_removal) {
        meanwhile.before_removal();
    }
    const int result = __real_unlink(path);
    const int reason = errno;
    if (meanwhile.after_removal) {
        meanwhile.after_removal();
    }
    errno = reason;
    return result;
}
}

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

class SomeoneElse {
  public:
    explicit SomeoneElse(Meanwhile actions) { meanwhile = std::move(actions); }
    ~SomeoneElse() { meanwhile = {}; }
    SomeoneElse(const SomeoneElse&) = delete;
    SomeoneElse& operator=(const SomeoneElse&) = delete;
};

constexpr const char* modes[] = {"w", "w+", "wb+"};

class OutputFile : public testing::TestWithParam<const char*> {
  protected:
    OwnedFile open_file(const fs::path& name) const {
        errno = 0;
        return openOutputFile(name.c_str(), GetParam());
    }
    // That the path is refused with some reason.
    void expect_refused(const fs::path& name) const {
        const OwnedFile file = open_file(name);
        const int reason = errno;
        EXPECT_EQ(file, nullptr);
        EXPECT_NE(reason, 0);
    }

    const TempDir directory;
    const fs::path path = directory / "file";
};

INSTANTIATE_TEST_SUITE_P(Modes, OutputFile, testing::ValuesIn(modes),
                         [](const auto& parameter) { return std::to_string(parameter.index); });

TEST_P(OutputFile, AFileThatIsNotThereIsMade) {
    OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    std::fputs("printer data\n", file.get());
    file.reset();
    EXPECT_EQ(read_file(path), "printer data\n");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path)));
}

TEST_P(OutputFile, AFileOfMoreThanTwoGigabytesIsReplaced) {
    // Programs of 32-bit machines have to be built for such files. A hole: it takes no room.
    write_file(path, "x");
    fs::resize_file(path, 3'000'000'000);
    EXPECT_NE(open_file(path), nullptr);
    EXPECT_EQ(fs::file_size(path), 0U);
}

TEST_P(OutputFile, ANewFileIsReadableAndWritableAsTheUmaskAllows) {
    const mode_t before = umask(022);
    open_file(path);
    umask(before);
    EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(0644));
}

TEST_P(OutputFile, AnOlderLongerFileIsReplaced) {
    write_file(path, std::string(10'000, 'x'));
    OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(fs::file_size(path), 0U);
    std::fputs("short", file.get());
    file.reset();
    EXPECT_EQ(read_file(path), "short");
}

TEST_P(OutputFile, AFileWithAnotherNameIsRefusedAndKept) {
    write_file(directory / "other", "precious");
    fs::create_hard_link(directory / "other", path);
    expect_refused(path);
    EXPECT_EQ(read_file(directory / "other"), "precious");
}

TEST_P(OutputFile, ALinkIsNotFollowed) {
    write_file(directory / "target", "precious");
    fs::create_symlink(directory / "target", path);
    expect_refused(path);
    EXPECT_EQ(read_file(directory / "target"), "precious");
}

TEST_P(OutputFile, ADanglingLinkMakesNoFile) {
    fs::create_symlink(directory / "target", path);
    expect_refused(path);
    EXPECT_FALSE(fs::exists(directory / "target"));
}

TEST_P(OutputFile, AFifoWithoutReaderIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    expect_refused(path);
}

TEST_P(OutputFile, AFifoWithAReaderIsRefusedToo) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const Descriptor reader(open(path.c_str(), O_RDONLY | O_NONBLOCK));
    ASSERT_TRUE(reader.is_open());
    expect_refused(path);
}

TEST_P(OutputFile, ADirectoryIsRefused) {
    fs::create_directory(path);
    expect_refused(path);
}

TEST_P(OutputFile, ADeviceIsRefused) {
    expect_refused("/dev/full");
    expect_refused("/dev/null");
}

TEST_P(OutputFile, AMissingDirectoryIsNotMade) {
    const OwnedFile file = open_file(directory / "missing" / "file");
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(fs::exists(directory / "missing"));
}

TEST_P(OutputFile, NoRefusalLeavesADescriptorBehind) {
    const auto lowest_free = [] {
        const Descriptor free(open("/dev/null", O_RDONLY));
        return free.get();
    };
    fs::create_directory(directory / "directory");
    write_file(directory / "other", "");
    fs::create_hard_link(directory / "other", directory / "another");
    const int before = lowest_free();
    expect_refused(directory / "directory");
    expect_refused(directory / "other");
    expect_refused("/dev/null");
    EXPECT_EQ(lowest_free(), before);
}

TEST_P(OutputFile, IsClosedWhenItsOwnerGoes) {
    OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    const int descriptor = fileno(file.get());
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
    file.reset();
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}

TEST_P(OutputFile, ProgramsStartedLaterDoNotInheritIt) {
    const OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    EXPECT_NE(fcntl(fileno(file.get()), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_P(OutputFile, IsReadableToWhereThereIsAPlus) {
    const OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    const int access = fcntl(fileno(file.get()), F_GETFL) & O_ACCMODE;
    const bool plus = std::string(GetParam()).find('+') != std::string::npos;
    EXPECT_EQ(access, plus ? O_RDWR : O_WRONLY);
}

TEST_P(OutputFile, AnOlderFileIsNotWrittenButReplaced) {
    // So nothing is written through a name that it got, or will get, at any moment.
    write_file(path, "old");
    const Descriptor older(open(path.c_str(), O_RDONLY));
    OwnedFile file = open_file(path);
    ASSERT_NE(file, nullptr);
    std::fputs("new", file.get());
    file.reset();
    EXPECT_EQ(read_file(path), "new");
    std::string content(4, '\0');
    content.resize(static_cast<std::size_t>(read(older.get(), content.data(), content.size())));
    EXPECT_EQ(content, "old");
}

TEST_P(OutputFile, AHardLinkThatComesAfterTheLookIsNotWrittenThrough) {
    write_file(path, "old");
    write_file(directory / "precious", "not to be touched");
    {
        const SomeoneElse swaps({.before_removal = [this] {
            fs::create_hard_link(directory / "precious", directory / "link");
            fs::rename(directory / "link", path);
        }});
        EXPECT_NE(open_file(path), nullptr);
    }
    EXPECT_EQ(read_file(directory / "precious"), "not to be touched");
    EXPECT_EQ(fs::hard_link_count(directory / "precious"), 1U);
}

TEST_P(OutputFile, ALinkThatComesAfterTheRemovalIsNotFollowed) {
    write_file(path, "old");
    write_file(directory / "precious", "not to be touched");
    {
        const SomeoneElse plants(
            {.after_removal = [this] { fs::create_symlink(directory / "precious", path); }});
        expect_refused(path);
    }
    EXPECT_EQ(read_file(directory / "precious"), "not to be touched");
    EXPECT_TRUE(fs::is_symlink(path));
}

TEST_P(OutputFile, AFileThatAnotherRemovesFirstIsMade) {
    for (const auto moment : {&Meanwhile::before_look, &Meanwhile::before_removal}) {
        write_file(path, "old");
        Meanwhile actions;
        actions.*moment = [this] { fs::remove(path); };
        const SomeoneElse removes(actions);
        EXPECT_NE(open_file(path), nullptr);
        EXPECT_TRUE(fs::exists(path));
    }
}

TEST_P(OutputFile, AFileThatComesAgainIsReplacedAgain) {
    // As where two filters open the same path.
    write_file(path, "old");
    int times = 0;
    const SomeoneElse writes({.after_removal = [&] {
        if (++times < 9) {
            write_file(path, "another's");
        }
    }});
    EXPECT_NE(open_file(path), nullptr);
    EXPECT_EQ(times, 9);
    EXPECT_EQ(fs::file_size(path), 0U);
}

TEST_P(OutputFile, AFileThatComesAgainForEverIsRefused) {
    write_file(path, "old");
    const SomeoneElse writes({.after_removal = [this] { write_file(path, "another's"); }});
    EXPECT_EQ(open_file(path), nullptr);
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(read_file(path), "another's");
}

}  // namespace
}  // namespace kelp_test
