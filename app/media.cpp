#include "app/media.h"

#include <cups/pwg.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "app/units.h"
#include "models/page.h"

namespace kelp_app {

namespace {

constexpr int kHundredthsPerMillimetre = 100;
constexpr double kPointsPerInch = 72.0;

double hundredthsOf(unsigned int points) {
    return points * kHundredthsPerInch / kPointsPerInch;
}

double pointsOf(int hundredths) {
    return hundredths * kPointsPerInch / kHundredthsPerInch;
}

/// Sheets have names instead of measures.
const char* sheetName(std::string_view size) {
    struct Sheet {
        std::string_view size;
        const char* name;
    };
    static constexpr Sheet kSheets[] = {{"A4", "iso_a4_210x297mm"},
                                        {"Letter", "na_letter_8.5x11in"},
                                        {"Tattoo_A5", "iso_a5_148x210mm"},
                                        {"Tattoo_A6", "iso_a6_105x148mm"}};
    for (const Sheet& sheet : kSheets) {
        if (sheet.size == size) {
            return sheet.name;
        }
    }
    return nullptr;
}

/// The standard's name for a size where it has one, else one that says the measures twice.
std::string labelName(const std::string& size, int width, int length) {
    const pwg_media_t* standard = pwgMediaForSize(width, length);
    if (standard != nullptr && standard->width == width && standard->length == length &&
        !std::string_view(standard->pwg).starts_with("custom_")) {
        return standard->pwg;
    }
    // The standard has no '.' in the name before the measures.
    std::string measures = size.substr(0, size.size() - 2);
    std::replace(measures.begin(), measures.end(), '.', '-');
    return (size.ends_with("in") ? "oe_" : "om_") + measures + "-label_" + size;
}

std::string customName(const char* prefix, double width, double length) {
    char text[64];
    std::snprintf(text, sizeof text, "%s_%gx%gmm", prefix, width / kHundredthsPerMillimetre,
                  length / kHundredthsPerMillimetre);
    return text;
}

Media customMedia(const char* prefix, double width, double length) {
    return {customName(prefix, width, length), static_cast<int>(width), static_cast<int>(length)};
}

}  // namespace

Media mediaOf(const kelp_models::PageSize& size) {
    if (const char* name = sheetName(size.name)) {
        const pwg_media_t* sheet = pwgMediaForPWG(name);
        return {name, sheet->width, sheet->length};
    }
    const std::string name = size.name;
    char* end = nullptr;
    const double width = std::strtod(name.c_str(), &end);
    const double length = std::strtod(*end == 'x' ? end + 1 : end, nullptr);
    const int unit = name.ends_with("in") ? kHundredthsPerInch : kHundredthsPerMillimetre;
    const auto hundredths = [unit](double measure) {
        return static_cast<int>(std::lround(measure * unit));
    };
    return {labelName(name, hundredths(width), hundredths(length)), hundredths(width),
            hundredths(length)};
}

std::vector<Media> supportedMedia(const kelp_models::Model& model) {
    std::vector<Media> media;
    for (const kelp_models::PageSize& size : model.sizes) {
        media.push_back(mediaOf(size));
    }
    // Within the limits, in whole hundredths.
    media.push_back(customMedia("custom_min", std::ceil(hundredthsOf(model.minWidth)),
                                std::ceil(hundredthsOf(model.minLength))));
    media.push_back(customMedia("custom_max", std::floor(hundredthsOf(model.maxWidth)),
                                std::floor(hundredthsOf(model.maxLength))));
    return media;
}

const kelp_models::PageSize* sizeOfMedia(const kelp_models::Model& model, int width, int length) {
    // Some sizes are hardly more than a point apart.
    const kelp_models::PageSize* nearest = nullptr;
    double distance = 1.0;
    for (const kelp_models::PageSize& size : model.sizes) {
        const double off = std::max(std::abs(pointsOf(width) - size.width),
                                    std::abs(pointsOf(length) - size.length));
        if (off < distance) {
            distance = off;
            nearest = &size;
        }
    }
    return nearest;
}

TargetPage pageOfMedia(const kelp_models::Model& model, int width, int length) {
    if (const kelp_models::PageSize* size = sizeOfMedia(model, width, length)) {
        return kelp_models::pageOf(model, *size);
    }
    return kelp_models::customPageOf(model, static_cast<float>(pointsOf(width)),
                                     static_cast<float>(pointsOf(length)));
}

}  // namespace kelp_app
