#pragma once

#include "tests/reference/job/page.h"

namespace reference {

// Points the printer at the processed page; returns the bytes filled in out, 0
// on failure.
int processPage(Printer& printer, const unsigned char* pixels, int bytesPerLine, int width,
                int height, unsigned char* out);

}  // namespace reference
