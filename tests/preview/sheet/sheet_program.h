#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "preview/bitmap.h"
#include "tests/preview/preview_program.h"
#include "tools/kelp-preview/sheet/halftones.h"

namespace kelp_test {

using Arguments = std::vector<std::string>;

// A picture in grey, in the test's own words: rows packed, 255 white.
struct Grey {
    unsigned width = 0;
    unsigned height = 0;
    std::string pixels;
};

// The file of a picture, binary with 255 levels.
std::string pgm(const Grey& picture);

// The dots as '#', the rest as '.'.
std::vector<std::string> dot_rows(const kelp_preview::Bitmap& dots);

// The words above a print: its halftone's name, what runs, the share of black dots.
std::vector<std::string> caption_of(const Halftone& halftone, const kelp_preview::Bitmap& print);

// Runs kelp-preview sheet in a temporary folder, with a home of its own for the fonts' cache.
class SheetProgram : public PreviewProgram {
  protected:
    SheetProgram();

    ProcessResult sheet(const Arguments& arguments);
    Command sheet_command(const Arguments& arguments);
    // Status 1, one line on standard error, nothing on standard output. The line, without its end
    // and the program's name.
    std::string refusal(const Arguments& arguments);
    static std::string refusal_of(const ProcessResult& result);

  private:
    TempDir home_;
};

}  // namespace kelp_test
