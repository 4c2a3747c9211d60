#include "preview/description.h"

#include <cstdarg>
#include <cstdio>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace kelp_preview {
namespace {

double millimetres(std::uint64_t dots) {
    return static_cast<double>(dots) / kDotsPerInch * kMillimetresPerInch;
}

using Names = std::initializer_list<std::pair<char, const char*>>;

/// By its first letter, as the printer takes it.
std::string nameOf(const std::string& value, Names names) {
    for (const auto& [letter, name] : names) {
        if (!value.empty() && value[0] == letter) {
            return name;
        }
    }
    return value;
}

[[gnu::format(printf, 1, 2)]] std::string format(const char* pattern, ...) {
    char text[128];
    va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(text, sizeof text, pattern, arguments);
    va_end(arguments);
    return text;
}

std::string line(std::string_view name, const std::string& value) {
    std::string result = "  " + std::string(name) + ":";
    result.resize(20, ' ');
    return result + (value.empty() ? "not set" : value) + "\n";
}

std::string list(const char* title, const Remarks& remarks) {
    std::string result;
    if (!remarks.empty()) {
        result += std::string("  ") + title + ":\n";
    }
    for (const Remark& remark : remarks.kept()) {
        result += "    byte " + std::to_string(remark.offset) + ": " + remark.text + "\n";
    }
    if (const std::uint64_t more = remarks.count() - remarks.kept().size(); more != 0) {
        result += "    and " + std::to_string(more) + " more\n";
    }
    return result;
}

}  // namespace

double Description::widthMillimetres() const {
    return millimetres(width);
}

double Description::heightMillimetres() const {
    return millimetres(height);
}

double Description::blackShare() const {
    return static_cast<double>(blackDots) /
           (static_cast<double>(width) * static_cast<double>(height));
}

double Description::compressionRatio() const {
    return label.graphicBytes == 0
               ? 0.0
               : static_cast<double>(label.dotBytes) / static_cast<double>(label.graphicBytes);
}

Description describe(const Label& label) {
    Description description{
        label, label.dots->width, label.dots->height, blackDots(*label.dots), {}};
    description.label.dots = nullptr;
    return description;
}

std::string mediaSensingName(const Setup& setup) {
    return nameOf(setup.mediaSensing, {{'Y', "gaps"}, {'M', "marks"}, {'N', "continuous"}});
}

std::string orientationName(const Setup& setup) {
    return nameOf(setup.orientation, {{'N', "normal"}, {'I', "turned by 180 degrees"}});
}

std::string printMethodName(const Setup& setup) {
    return nameOf(setup.printMethod, {{'D', "direct thermal"}, {'T', "thermal transfer"}});
}

std::string afterPrintName(const Setup& setup) {
    return nameOf(setup.afterPrint, {{'T', "tear off"}, {'P', "peel off"}, {'C', "cut"}});
}

std::string asText(const Description& d, std::size_t number) {
    const Setup& setup = d.label.setup;
    const auto dots = [](const std::optional<std::uint64_t>& value) {
        return value ? std::to_string(*value) : std::string("not set");
    };
    std::string text = "Label " + std::to_string(number) + "\n";
    text += line("size", std::to_string(d.width) + " x " + std::to_string(d.height) + " dots, " +
                             format("%.1f x %.1f mm", d.widthMillimetres(), d.heightMillimetres()));
    text += line("page", "width " + dots(setup.width) + ", length " + dots(setup.length) +
                             (setup.sizeLine.empty() ? "" : ", " + setup.sizeLine));
    text += line("copies", std::to_string(d.label.copies));
    text += line("media sensing", mediaSensingName(setup));
    text += line("orientation", orientationName(setup));
    text += line("speed", setup.speed);
    text += line("darkness", setup.darkness ? std::to_string(*setup.darkness) : "");
    text += line("print method", printMethodName(setup));
    text += line("after printing", afterPrintName(setup));
    text += line("graphic", std::to_string(d.label.graphicBytes) + " bytes for " +
                                std::to_string(d.label.dotBytes) + ", " +
                                format("ratio %.2f", d.compressionRatio()));
    text += line("black dots", format("%.2f %%", d.blackShare() * 100));
    if (!d.picture.empty()) {
        text += line("picture", d.picture);
    }
    return text + asText(d.label.findings);
}

std::string asText(const Findings& findings) {
    return list("unknown commands", findings.unknownCommands) + list("warnings", findings.warnings);
}

}  // namespace kelp_preview
