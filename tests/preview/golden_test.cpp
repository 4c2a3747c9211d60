// The labels of tests/golden/, whose README tells what each of them shows.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "tests/preview/printed_page.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using kelp_preview::Bitmap;
using kelp_test::Picture;
using kelp_test::printed;
using kelp_test::read_directory;
using kelp_test::read_file;
using kelp_test::read_png;
using kelp_test::TempDir;
using Rows = std::vector<std::string>;

const fs::path golden = KELP_GOLDEN_DIR;

std::vector<std::string> lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> result;
    for (std::string line; std::getline(stream, line);) {
        result.push_back(line);
    }
    return result;
}

// Of every stream there is.
std::vector<std::string> names() {
    std::vector<std::string> result;
    for (const auto& [file, content] : read_directory(golden)) {
        if (fs::path(file).extension() == ".zpl") {
            result.push_back(fs::path(file).stem());
        }
    }
    return result;
}

std::string description(const std::string& name) {
    return read_file(golden / (name + ".txt"));
}

// The names of the pictures, without extension, as the description has them.
std::vector<std::string> pictures(const std::string& name) {
    const std::string title = "  picture:          ";
    std::vector<std::string> result;
    for (const std::string& line : lines(description(name))) {
        if (line.starts_with(title)) {
            result.push_back(fs::path(line.substr(title.size())).stem());
        }
    }
    return result;
}

Rows drawn(const std::string& picture) {
    return lines(read_file(golden / (picture + ".dots")));
}

void expect_picture(const Picture& picture, const Rows& rows) {
    EXPECT_EQ(picture.rows, rows);
    EXPECT_EQ(picture.bit_depth, 1U);
    EXPECT_EQ(picture.colour_type, 0U);  // grey
    // 203 dots per inch: 203 / 0.0254 = 7992.1
    EXPECT_EQ(picture.dots_per_metre_x, 7992U);
    EXPECT_EQ(picture.dots_per_metre_y, 7992U);
}

TEST(Golden, EachStreamGivesItsDescriptionAndItsPictures) {
    ASSERT_FALSE(names().empty());
    for (const std::string& name : names()) {
        SCOPED_TRACE(name);
        const TempDir dir;
        kelp_test::Command show;
        show.program = KELP_PREVIEW;
        show.arguments = {"show", golden / (name + ".zpl"), "-o", name + ".png"};
        show.working_directory = dir.path();
        const kelp_test::ProcessResult result = run_process(show);
        EXPECT_EQ(result.output, description(name));
        EXPECT_EQ(result.error, "");
        const bool warned = description(name).find("\n  warnings:\n") != std::string::npos;
        EXPECT_EQ(result.exit_status, warned ? 2 : 0) << result.ending();

        ASSERT_FALSE(pictures(name).empty());
        for (const std::string& picture : pictures(name)) {
            SCOPED_TRACE(picture);
            expect_picture(read_png(golden / (picture + ".png")), drawn(picture));
            expect_picture(read_png(dir / (picture + ".png")), drawn(picture));
        }
        EXPECT_EQ(read_directory(dir.path()).size(), pictures(name).size());
    }
}

TEST(Golden, EveryFileBelongsToAStreamAndEveryStreamIsExplained) {
    std::set<std::string> expected = {".gitattributes", "README.md"};
    const std::string readme = read_file(golden / "README.md");
    for (const std::string& name : names()) {
        expected.insert({name + ".zpl", name + ".txt"});
        for (const std::string& picture : pictures(name)) {
            expected.insert({picture + ".dots", picture + ".png"});
        }
        EXPECT_NE(readme.find("\n## " + name + "\n"), std::string::npos) << name;
    }
    std::set<std::string> there;
    for (const auto& [file, content] : read_directory(golden)) {
        there.insert(file);
    }
    EXPECT_EQ(there, expected);
}

Bitmap bitmap_of(const Rows& rows, std::size_t width) {
    Bitmap bitmap(width, rows.size());
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            if (rows[y].at(x) == '#') {
                bitmap.setDot(x, y);
            }
        }
    }
    return bitmap;
}

// The stream from its last label block on.
std::string label_block(const std::string& name) {
    const std::string stream = read_file(golden / (name + ".zpl"));
    return stream.substr(stream.rfind("^XX\r\n^PQ"));
}

TEST(Golden, LabelsInTheDriversFormAreWhatItSends) {
    for (const std::string name : {"digits", "runs"}) {
        const Rows rows = drawn(name);
        EXPECT_EQ(label_block(name), printed(bitmap_of(rows, rows.at(0).size()))) << name;
    }
    // a page of 12 dots; two bytes have 16
    EXPECT_EQ(label_block("odd-width"), printed(bitmap_of(drawn("odd-width"), 12)));
    EXPECT_EQ(label_block("two-labels"), printed(bitmap_of(drawn("two-labels-2"), 8)));
    // turned by the printer
    EXPECT_EQ(label_block("turned"), printed(turned(bitmap_of(drawn("turned"), 8))));
    // three copies there, a page alone has one
    std::string job = label_block("job");
    job.replace(job.find("^PQ3"), 4, "^PQ1");
    EXPECT_EQ(job, printed(bitmap_of(drawn("job"), 40)));
}

TEST(Golden, TheRepeatedRowsAreThoseThatTheDriverSendsForBlackOnes) {
    const Rows page = {"################", "################", "....####....####",
                       "################", "################", "####....####....",
                       "................"};
    EXPECT_EQ(label_block("repeat"), printed(bitmap_of(page, 16)));
    EXPECT_NE(page, drawn("repeat"));
}

}  // namespace
