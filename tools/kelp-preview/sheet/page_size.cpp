#include "tools/kelp-preview/sheet/page_size.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "preview/description.h"

namespace {

using kelp_preview::kDotsPerInch;
using kelp_preview::kMillimetresPerInch;

constexpr double kShortest = 8;
constexpr double kLongest = 100'000;

struct NamedSize {
    std::string_view name;
    std::string_view size;
};
constexpr NamedSize kNamedSizes[] = {
    {"A4", "210x297mm"}, {"A5", "148x210mm"}, {"A6", "105x148mm"}, {"Letter", "8.5x11in"}};

std::optional<std::uint32_t> dots(double length, double perUnit) {
    const double result = std::floor(length * perUnit);
    if (!(result >= kShortest && result <= kLongest)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(result);
}

/// A number of digits and at most one point; takes it off the text.
std::optional<double> takeNumber(std::string& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789."), text.size());
    const std::string digits = text.substr(0, end);
    if (digits.empty() || digits.size() > 12 || std::count(digits.begin(), digits.end(), '.') > 1) {
        return std::nullopt;
    }
    text.erase(0, end);
    return std::strtod(digits.c_str(), nullptr);
}

}  // namespace

std::optional<PageSize> parsePageSize(const std::string& text) {
    for (const NamedSize& named : kNamedSizes) {
        if (text == named.name) {
            return parsePageSize(std::string(named.size));
        }
    }
    std::string rest = text;
    const auto width = takeNumber(rest);
    if (!width || !rest.starts_with('x')) {
        return std::nullopt;
    }
    rest.erase(0, 1);
    const auto height = takeNumber(rest);
    if (!height || (!rest.empty() && rest != "mm" && rest != "in")) {
        return std::nullopt;
    }
    const double perUnit = rest.empty()   ? 1
                           : rest == "in" ? kDotsPerInch
                                          : kDotsPerInch / kMillimetresPerInch;
    const auto dotsWide = dots(*width, perUnit);
    const auto dotsHigh = dots(*height, perUnit);
    if (!dotsWide || !dotsHigh) {
        return std::nullopt;
    }
    return PageSize{*dotsWide, *dotsHigh};
}

PageSize fitted(std::uint32_t width, std::uint32_t height, const PageSize& page) {
    const double scale = std::min(static_cast<double>(page.width) / width,
                                  static_cast<double>(page.height) / height);
    const auto side = [&](std::uint32_t pixels, std::uint32_t most) {
        return std::clamp(static_cast<std::uint32_t>(std::lround(pixels * scale)), 1U, most);
    };
    return {side(width, page.width), side(height, page.height)};
}

std::uint32_t paddedWidth(std::uint32_t width) {
    return (width + 3) / 8 * 8 + 4;
}
