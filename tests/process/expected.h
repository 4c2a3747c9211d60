#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/raster_stream.h"

namespace kelp_test {

// What a job begins with: 64 line feeds.
std::string preamble();

struct SetupBlock {
    // What follows "SIZE ", the width and the length in dots.
    std::string size = "2.0 mm, 0.3 mm";
    int width = 16;
    int length = 2;
    // The commands between the length and the end of the block, without their line ends.
    std::vector<std::string> commands = {"^MNN", "^PON", "~SD0"};

    std::string text() const;
};

struct Graphic {
    int copies = 1;
    unsigned total = 4;
    unsigned row_bytes = 2;
    std::string rows = "JFF0,";

    std::string text() const;
};

// 16 × 2 dots at 203 dpi: a full row, then four dots and nothing.
//
// Its size is 16 × 25.4 / 203 = 2.00197 mm by 0.25025 mm; 203 × those / 25.4 is a hair above 16
// and 2 dots. Packed, the rows are FF FF and F0 00: "FFFF" goes out as four times F, "JF", and
// "F000" as "F", an odd "0" and "," for the rest. The defaults of SetupBlock and Graphic are this
// page's, for a PPD without any option.
Page tiny_page();
std::string tiny_page_output();

// A grey bitmap file as the snapshots are: the header declares rows padded to four bytes, the
// pixels follow as given.
std::string bitmap(unsigned width, unsigned height, const std::string& pixels);

// What stands before the two addresses of a page in the log: one is decimal, one hexadecimal.
inline constexpr std::string_view adjusted_address = "pointer address: ";
inline constexpr std::string_view freed_address = "processing result, address: 0x";

// The digits behind the first occurrence of the text; empty when there are none.
std::string digits_behind(const std::string& log, std::string_view text);

// The log with the digits of every such address replaced by "<address>".
std::string without_addresses(std::string log);

// The lines that begin with the prefix.
std::vector<std::string> lines_with(const std::string& log, std::string_view prefix);

bool contains(const std::string& text, std::string_view part);

}  // namespace kelp_test
