#include "tests/spooler/documents.h"

#include <stdexcept>

#include "tests/support/run_process.h"

namespace kelp_test {
namespace {

const char* device(Format format) {
    switch (format) {
        case Format::pdf:
            return "pdfwrite";
        case Format::png:
            return "png16m";
        default:
            return "jpeg";
    }
}

}  // namespace

void make_document(const std::filesystem::path& file, Format format, const Sheet& sheet,
                   const std::string& postscript, int dots_per_inch) {
    Command command;
    command.program = "/usr/bin/gs";
    command.arguments = {"-q",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-dSAFER",
                         std::string("-sDEVICE=") + device(format),
                         "-dDEVICEWIDTHPOINTS=" + std::to_string(sheet.width),
                         "-dDEVICEHEIGHTPOINTS=" + std::to_string(sheet.height),
                         "-r" + std::to_string(format == Format::pdf ? 720 : dots_per_inch),
                         "-o",
                         file.string(),
                         "-"};
    command.environment = {
        {"PATH", "/usr/bin:/bin"}, {"TMPDIR", file.parent_path().string()}, {"LC_ALL", "C"}};
    command.working_directory = file.parent_path();
    command.input = FromBytes{postscript};
    const ProcessResult result = run_process(command);
    if (result.exit_status != 0 || !std::filesystem::exists(file)) {
        throw std::runtime_error("gs: " + result.ending() + "\n" + result.output + result.error);
    }
    std::filesystem::permissions(file, static_cast<std::filesystem::perms>(0644));
}

std::string asymmetric_picture(const Sheet& sheet) {
    return "/w " + std::to_string(sheet.width) + " def /h " + std::to_string(sheet.height) +
           " def\n"
           "0 setgray 0 h 36 sub 36 36 rectfill\n"
           "0 h 72 sub w 2 div 18 rectfill\n"
           "0 1 7 { /i exch def i 8 div setgray w 2 div i 9 mul add h 36 sub 9 36 rectfill } for\n"
           "showpage\n";
}

std::string numbered_pages(int count) {
    return "/Helvetica findfont 60 scalefont setfont\n"
           "1 1 " +
           std::to_string(count) +
           " { /page exch def 30 60 moveto page 10 string cvs show\n"
           "  0 0 page 20 mul 10 rectfill showpage } for\n";
}

std::string noise_pages(const Sheet& sheet, int count) {
    const int columns = sheet.width * 2;
    const int rows = sheet.height * 2;
    return "/line " + std::to_string(columns) +
           " string def\n"
           "1 1 " +
           std::to_string(count) + " { srand gsave " + std::to_string(sheet.width) + " " +
           std::to_string(sheet.height) + " scale " + std::to_string(columns) + " " +
           std::to_string(rows) + " 8 [" + std::to_string(columns) + " 0 0 -" +
           std::to_string(rows) + " 0 " + std::to_string(rows) +
           "]\n"
           "  { 0 1 line length 1 sub { line exch rand 255 and put } for line } image\n"
           "  grestore showpage } for\n";
}

}  // namespace kelp_test
