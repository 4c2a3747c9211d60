#include "preview/comparison.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <span>
#include <utility>

#include "preview/description.h"

namespace kelp_preview {
namespace {

/// The bytes of a row, none below the picture.
std::span<const unsigned char> rowOf(const Bitmap& bitmap, std::uint64_t y) {
    return y < bitmap.height ? std::span(bitmap.row(y), bitmap.rowBytes())
                             : std::span<const unsigned char>();
}

unsigned byteOf(std::span<const unsigned char> row, std::size_t i) {
    return i < row.size() ? row[i] : 0U;
}

std::string shown(const std::string& value) {
    return value.empty() ? "not set" : value;
}

std::string shown(const std::optional<std::uint64_t>& value) {
    return value ? std::to_string(*value) : "not set";
}

class Settings {
  public:
    template <typename Value>
    void compare(const char* name, const Value& before, const Value& after) {
        if (before != after) {
            lines_.push_back(std::string(name) + ": " + shown(before) + " and " + shown(after));
        }
    }
    std::vector<std::string> lines() && { return std::move(lines_); }

  private:
    std::vector<std::string> lines_;
};

}  // namespace

DotDifference compareDots(const Bitmap& before, const Bitmap& after) {
    DotDifference difference;
    const std::uint64_t height = std::max(before.height, after.height);
    for (std::uint64_t y = 0; y < height; ++y) {
        const auto rowBefore = rowOf(before, y);
        const auto rowAfter = rowOf(after, y);
        for (std::size_t i = 0; i < std::max(rowBefore.size(), rowAfter.size()); ++i) {
            const unsigned was = byteOf(rowBefore, i);
            const unsigned is = byteOf(rowAfter, i);
            if (was == is) {
                continue;
            }
            if (!difference.first) {
                const auto changed = static_cast<unsigned char>(was ^ is);
                difference.first = Place{
                    std::uint64_t{i} * 8 + static_cast<unsigned>(std::countl_zero(changed)), y};
            }
            difference.added += static_cast<unsigned>(std::popcount(is & ~was));
            difference.missing += static_cast<unsigned>(std::popcount(was & ~is));
        }
    }
    return difference;
}

std::vector<std::string> compareSettings(const Label& before, const Label& after) {
    const Setup& was = before.setup;
    const Setup& is = after.setup;
    Settings settings;
    settings.compare("copies", std::optional(before.copies), std::optional(after.copies));
    settings.compare("page width", was.width, is.width);
    settings.compare("page length", was.length, is.length);
    settings.compare("size line", was.sizeLine, is.sizeLine);
    settings.compare("media sensing", mediaSensingName(was), mediaSensingName(is));
    settings.compare("orientation", orientationName(was), orientationName(is));
    settings.compare("speed", was.speed, is.speed);
    settings.compare("darkness", was.darkness, is.darkness);
    settings.compare("print method", printMethodName(was), printMethodName(is));
    settings.compare("after printing", afterPrintName(was), afterPrintName(is));
    return std::move(settings).lines();
}

}  // namespace kelp_preview
