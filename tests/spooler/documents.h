#pragma once

#include <filesystem>
#include <string>

namespace kelp_test {

// Documents to print, made from a few lines of PostScript.

enum class Format { pdf, png, jpeg };

// Width and height in points. Pictures have one page.
struct Sheet {
    int width = 288;
    int height = 432;
};

// Writes the file. A picture has `dots_per_inch`. Throws std::runtime_error when the rasteriser
// fails.
void make_document(const std::filesystem::path& file, Format format, const Sheet& sheet,
                   const std::string& postscript, int dots_per_inch = 203);

// A picture that no mirror and no turn maps onto itself: a block in the left top corner of the
// sheet, a bar below it that ends in the middle, a diagonal wedge of greys to the right.
std::string asymmetric_picture(const Sheet& sheet);

// So many different pages.
std::string numbered_pages(int count);

// Pages whose every dot differs from its neighbours, which does not compress.
std::string noise_pages(const Sheet& sheet, int count);

}  // namespace kelp_test
