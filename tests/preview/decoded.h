#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "preview/stream_decoder.h"

namespace kelp_test {

struct Decoded {
    std::vector<kelp_preview::Label> labels;
    kelp_preview::Findings rest;

    // Of the labels and behind them.
    std::uint64_t warnings() const;
};

// The labels of a stream. Throws StreamRefused.
Decoded decode(const std::string& stream, std::uint64_t max_dots = 200'000'000);

// A label block with one graphic.
std::string block(unsigned total, unsigned row_bytes, const std::string& data);

// The rows as hexadecimal digits.
std::vector<std::string> rows(const kelp_preview::Bitmap& bitmap);

// The rows of the only label of a stream with this graphic; the words of the first warning in
// their stead, if there is any.
std::vector<std::string> decoded_rows(unsigned total, unsigned row_bytes, const std::string& data);

}  // namespace kelp_test
