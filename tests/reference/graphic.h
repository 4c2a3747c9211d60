#pragma once

#include <string>
#include <vector>

namespace reference {

// What a printer makes of a graphic's data: the decoder that the preview is held to. That the
// preview reads what the driver writes shows only that the two agree; this one shows what any
// other data mean, damaged ones too.
struct Graphic {
    std::vector<std::string> rows;  // whole ones, a character of "0123456789ABCDEF" for four dots
    bool clean = true;              // nothing about the data is wrong
};

Graphic readGraphic(const std::string& data, unsigned rowBytes, unsigned rows);

}  // namespace reference
