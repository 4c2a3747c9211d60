#include "preview/description_json.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace kelp_preview {
namespace {

using Json = nlohmann::ordered_json;

Json orNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json orNull(const std::optional<std::uint64_t>& number) {
    return number ? Json(*number) : Json();
}

Json listOf(const Remarks& remarks, const char* what) {
    Json list = Json::array();
    for (const Remark& remark : remarks.kept()) {
        list.push_back({{"offset", remark.offset}, {what, remark.text}});
    }
    return list;
}

}  // namespace

Json asJson(const Findings& findings) {
    const auto dropped = [](const Remarks& remarks) {
        return remarks.count() - remarks.kept().size();
    };
    return {{"unknown_commands", listOf(findings.unknownCommands, "command")},
            {"unknown_commands_not_listed", dropped(findings.unknownCommands)},
            {"warnings", listOf(findings.warnings, "text")},
            {"warnings_not_listed", dropped(findings.warnings)}};
}

Json asJson(const Description& d) {
    const Setup& setup = d.label.setup;
    Json json = {
        {"offset", d.label.offset},
        {"width_dots", d.width},
        {"height_dots", d.height},
        {"width_mm", d.widthMillimetres()},
        {"height_mm", d.heightMillimetres()},
        {"page_width_dots", orNull(setup.width)},
        {"page_length_dots", orNull(setup.length)},
        {"size_line", orNull(setup.sizeLine)},
        {"copies", d.label.copies},
        {"media_sensing", orNull(mediaSensingName(setup))},
        {"orientation", orNull(orientationName(setup))},
        {"speed", orNull(setup.speed)},
        {"darkness", orNull(setup.darkness)},
        {"print_method", orNull(printMethodName(setup))},
        {"after_printing", orNull(afterPrintName(setup))},
        {"graphic_bytes", d.label.graphicBytes},
        {"dot_bytes", d.label.dotBytes},
        {"compression_ratio", d.compressionRatio()},
        {"black_dots", d.blackDots},
        {"black_share", d.blackShare()},
        {"picture", orNull(d.picture)},
    };
    json.update(asJson(d.label.findings));
    return json;
}

}  // namespace kelp_preview
