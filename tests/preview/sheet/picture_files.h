#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "pictures/grey_picture.h"

// Files of pictures, made by the formats' own libraries.

namespace kelp_test {

struct PngFile {
    unsigned width = 0;
    unsigned height = 0;
    int depth = 8;
    int colour_type = 0;    // PNG_COLOR_TYPE_GRAY and the like
    std::string rows = {};  // as the format packs them
    bool interlaced = false;
    std::vector<std::uint32_t> palette = {};  // 0xRRGGBB
    std::string palette_alpha = {};           // of its first colours
    std::vector<std::uint16_t> transparent_colour =
        {};                         // of a picture without palette: 1 or 3 samples
    unsigned pixels_per_metre = 0;  // 0 tells nothing
};
std::string png_file(const PngFile& png);

struct JpegFile {
    unsigned width = 0;
    unsigned height = 0;
    int channels = 1;  // 1 grey, 3 colours, 4 inks
    std::string rows = {};
    bool progressive = false;
    bool adobe_marker = true;   // of a file of inks
    bool luma_of_inks = false;  // inks stored as YCCK
};
// Of the best quality.
std::string jpeg_file(const JpegFile& jpeg);

// Writes the numbers into a file's bytes, the most significant byte first.
void put_number(std::string& file, std::size_t at, int size, std::uint32_t value);

// A PNG without picture that declares this size.
std::string png_that_declares(std::uint32_t width, std::uint32_t height);

// What the reader makes of the file: its pixels, or why it does not take it, in brackets.
using Reader = GreyPicture (*)(std::string_view file, std::uint64_t maxPixels);
std::vector<int> levels(Reader reader, const std::string& file);
std::string refusal_by(Reader reader, const std::string& file, std::uint64_t max_pixels = 1 << 20);

}  // namespace kelp_test
