#include "tests/unit/enhance/grey_image.h"

#include <algorithm>
#include <cstddef>

namespace kelp_test {

TQImage grey(const Rows& rows) {
    std::vector<int> bytes;
    for (const std::vector<int>& row : rows) {
        bytes.insert(bytes.end(), row.begin(), row.end());
    }
    return coloured(static_cast<int>(rows.at(0).size()), static_cast<int>(rows.size()), TQ_IMG_GRAY,
                    bytes);
}

TQImage uniform(int width, int height, int level) {
    return grey(Rows(static_cast<std::size_t>(height),
                     std::vector<int>(static_cast<std::size_t>(width), level)));
}

TQImage scattered(int width, int height) {
    Rows rows(static_cast<std::size_t>(height), std::vector<int>(static_cast<std::size_t>(width)));
    unsigned state = 12345;
    for (std::vector<int>& row : rows) {
        for (int& level : row) {
            state = state * 1664525U + 1013904223U;
            level = static_cast<int>(state >> 24);
        }
    }
    return grey(rows);
}

Rows rowsOf(const TQImage& image) {
    const std::vector<int> bytes = bytesOf(image);
    Rows rows;
    for (std::int32_t y = 0; y < image.height; ++y) {
        const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
        rows.emplace_back(first, first + image.width);
    }
    return rows;
}

std::vector<int> bytesOf(const TQImage& image) {
    const std::ptrdiff_t count =
        static_cast<std::ptrdiff_t>(image.width) * image.height * image.channels;
    return {image.data, image.data + count};
}

TQImage coloured(int width, int height, TQ_IMG_COLOR color, const std::vector<int>& bytes) {
    std::vector<unsigned char> source(bytes.size());
    std::transform(bytes.begin(), bytes.end(), source.begin(),
                   [](int byte) { return static_cast<unsigned char>(byte); });
    return TQImage(width, height, color, source.data());
}

}  // namespace kelp_test
