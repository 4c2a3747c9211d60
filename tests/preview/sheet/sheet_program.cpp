#include "tests/preview/sheet/sheet_program.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "tests/support/files.h"

// The library of fonts keeps a little of what it allocates; a leak of ours is still found.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

namespace kelp_test {

std::string pgm(const Grey& picture) {
    return "P5\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) +
           "\n255\n" + picture.pixels;
}

std::vector<std::string> dot_rows(const kelp_preview::Bitmap& dots) {
    std::vector<std::string> rows(dots.height, std::string(dots.width, '.'));
    for (std::uint64_t y = 0; y < dots.height; ++y) {
        for (std::uint64_t x = 0; x < dots.width; ++x) {
            if (dots.dot(x, y)) {
                rows[y][x] = '#';
            }
        }
    }
    return rows;
}

std::vector<std::string> caption_of(const Halftone& halftone, const kelp_preview::Bitmap& print) {
    std::uint64_t black = 0;
    for (const std::string& row : dot_rows(print)) {
        black += static_cast<std::uint64_t>(std::count(row.begin(), row.end(), '#'));
    }
    char share[32];
    std::snprintf(
        share, sizeof share, "%.2f %% black",
        100.0 * static_cast<double>(black) / static_cast<double>(print.width * print.height));
    return {halftone.optionName(), std::string(halftone.runs), share};
}

SheetProgram::SheetProgram() {
    // The captions that a test draws itself must come from the same fonts.
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                             "FONTCONFIG_FILE", "FONTCONFIG_PATH"}) {
        unsetenv(name);
    }
    setenv("HOME", home_.path().c_str(), 1);
    write_file(home_ / "leaks", __lsan_default_suppressions());
    // For programs that a test starts by itself.
    const std::string options = "print_suppressions=0:suppressions=" + (home_ / "leaks").string();
    setenv("LSAN_OPTIONS", options.c_str(), 1);
}

Command SheetProgram::sheet_command(const Arguments& arguments) {
    Command command = given({"sheet"});
    command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
    command.environment = {
        {"PATH", "/usr/bin:/bin"},
        {"HOME", home_.path().string()},
        {"LC_ALL", "C"},
        {"LSAN_OPTIONS", "print_suppressions=0:suppressions=" + (home_ / "leaks").string()}};
    return command;
}

ProcessResult SheetProgram::sheet(const Arguments& arguments) {
    return run_process(sheet_command(arguments));
}

std::string SheetProgram::refusal(const Arguments& arguments) {
    return refusal_of(sheet(arguments));
}

std::string SheetProgram::refusal_of(const ProcessResult& result) {
    EXPECT_EQ(result.exit_status, 1) << result.ending() << "\n" << result.error;
    EXPECT_EQ(result.output, "");
    const std::string begin = "kelp-preview: ";
    if (!result.error.starts_with(begin) || !result.error.ends_with('\n') ||
        result.error.find('\n') != result.error.size() - 1) {
        ADD_FAILURE() << "not one line of the program: " << result.error;
        return result.error;
    }
    return result.error.substr(begin.size(), result.error.size() - begin.size() - 1);
}

}  // namespace kelp_test
