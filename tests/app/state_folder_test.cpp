#include "app/state_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <stdexcept>

#include "tests/support/temp_dir.h"

namespace kelp_app {
namespace {

unsigned mode_of(const std::filesystem::path& path) {
    struct stat found {};
    stat(path.c_str(), &found);
    return found.st_mode & 07777;
}

TEST(StateFolder, IsMadeForItsUserAlone) {
    const kelp_test::TempDir directory;
    const std::filesystem::path folder = directory / "a" / "b" / "state";
    EXPECT_EQ(stateFolder(folder.c_str()), folder);
    EXPECT_EQ(mode_of(folder), 0700U);
}

TEST(StateFolder, IsClosedToOthersWhereItIsThereAlready) {
    const kelp_test::TempDir directory;
    const std::filesystem::path folder = directory / "state";
    std::filesystem::create_directory(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    stateFolder(folder.c_str());
    EXPECT_EQ(mode_of(folder), 0700U);
}

TEST(StateFolder, IsNoLinkAndNoFile) {
    const kelp_test::TempDir directory;
    std::filesystem::create_directory(directory / "there");
    std::filesystem::create_symlink(directory / "there", directory / "link");
    EXPECT_THROW(stateFolder((directory / "link").c_str()), std::runtime_error);
    std::ofstream(directory / "file") << "text";
    EXPECT_THROW(stateFolder((directory / "file").c_str()), std::runtime_error);
    EXPECT_THROW(stateFolder((directory / "file" / "below").c_str()), std::runtime_error);
}

TEST(StateFolder, IsTheServiceManagersFirst) {
    const kelp_test::TempDir directory;
    const std::filesystem::path folder = directory / "of-service";
    setenv("STATE_DIRECTORY", folder.c_str(), 1);
    EXPECT_EQ(stateFolder(nullptr), folder);
    // It may be behind a link, as that of a dynamic user is.
    std::filesystem::create_symlink(folder, directory / "link");
    setenv("STATE_DIRECTORY", (directory / "link").c_str(), 1);
    EXPECT_EQ(stateFolder(nullptr), folder);
    unsetenv("STATE_DIRECTORY");
}

}  // namespace
}  // namespace kelp_app
