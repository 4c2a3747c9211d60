#include <algorithm>
#include <cstddef>
#include <limits>

#include "pictures/picture_formats.h"

namespace {

bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

class PgmReader {
  public:
    explicit PgmReader(std::string_view file) : rest_(file.substr(2)) {}  // behind "P5"

    /// A number behind white space and comments.
    std::uint32_t number() {
        skipSpace();
        std::uint64_t value = 0;
        std::size_t digits = 0;
        while (digits < rest_.size() && rest_[digits] >= '0' && rest_[digits] <= '9') {
            value = value * 10 + static_cast<unsigned>(rest_[digits] - '0');
            if (value > 0x7FFFFFFF) {
                throw PictureError("a broken PGM: a number is too large");
            }
            ++digits;
        }
        if (digits == 0) {
            throw PictureError(rest_.empty() ? "a broken PGM: it ends early"
                                             : "a broken PGM: a number is missing");
        }
        rest_.remove_prefix(digits);
        return static_cast<std::uint32_t>(value);
    }

    /// The bytes behind the one white space that ends the header.
    std::string_view raster() const { return rest_.substr(rest_.empty() ? 0 : 1); }
    std::size_t bytesLeft() const { return rest_.size(); }

  private:
    void skipSpace() {
        while (!rest_.empty() && (isSpace(rest_[0]) || rest_[0] == '#')) {
            rest_.remove_prefix(rest_[0] == '#' ? std::min(rest_.find('\n'), rest_.size()) : 1);
        }
    }

    std::string_view rest_;
};

unsigned char level(std::uint32_t sample, std::uint32_t largest) {
    if (sample > largest) {
        throw PictureError("a broken PGM: a sample is over the largest");
    }
    return static_cast<unsigned char>((sample * 255U + largest / 2) / largest);
}

void readBinary(std::string_view raster, std::uint32_t largest, std::size_t count,
                std::vector<unsigned char>& pixels) {
    const std::size_t sampleBytes = largest > 255 ? 2 : 1;
    if (raster.size() / sampleBytes < count) {
        throw PictureError("a broken PGM: it ends early");
    }
    for (std::size_t i = 0; i < count * sampleBytes; i += sampleBytes) {
        std::uint32_t sample = static_cast<unsigned char>(raster[i]);
        if (sampleBytes == 2) {
            sample = sample << 8 | static_cast<unsigned char>(raster[i + 1]);
        }
        pixels.push_back(level(sample, largest));
    }
}

}  // namespace

GreyPicture pictureOfPgm(std::string_view file, std::uint64_t maxPixels) {
    if (!file.starts_with("P5") && !file.starts_with("P2")) {
        throw PictureError("a broken PGM: it does not begin as one");
    }
    PgmReader reader(file);
    const std::uint32_t width = reader.number();
    const std::uint32_t height = reader.number();
    checkPictureSize(width, height, maxPixels);
    const std::uint32_t largest = reader.number();
    if (largest == 0 || largest > 65535) {
        throw PictureError("a broken PGM: its largest sample is not 1 to 65535");
    }
    const std::size_t count = std::size_t{width} * height;
    // What is not there is not made room for.
    if (reader.bytesLeft() < count) {
        throw PictureError("a broken PGM: it ends early");
    }
    GreyPicture picture{width, height, {}};
    picture.pixels.reserve(count);
    if (file[1] == '5') {
        readBinary(reader.raster(), largest, count, picture.pixels);
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            picture.pixels.push_back(level(reader.number(), largest));
        }
    }
    return picture;
}

PictureSize sizeOfPgm(std::string_view file) {
    PgmReader reader(file);
    const std::uint32_t width = reader.number();
    const std::uint32_t height = reader.number();
    checkPictureSize(width, height, std::numeric_limits<std::uint64_t>::max());
    return {width, height};
}
