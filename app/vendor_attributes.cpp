#include "app/vendor_attributes.h"

#include <charconv>
#include <vector>

namespace kelp_app {

namespace {

using Kind = VendorAttribute::Kind;

constexpr int kBrightnessSteps = 10;  // each way

constexpr Keyword kHalftones[] = {{"threshold", "None"},
                                  {"ordered-4x4", "FloydSteinberg"},
                                  {"burkes", "Ordered"},
                                  {"stucki", "Burkes"},
                                  {"jarvis-judice-ninke", "Stucki"},
                                  {"sierra", "JarvisJudiceNinke"},
                                  {"stevenson-arce", "Sierra"},
                                  {"bayer", "StevensonArce"},
                                  {"stencil-light", "Tattoo"},
                                  {"stencil-dense", "Tattoo_X8"}};
constexpr Keyword kMirror[] = {{"false", "False"}, {"true", "True"}};
// Of a stencil the normal print is the inverse of what the chain makes.
constexpr Keyword kNegative[] = {{"false", "True"}, {"true", "False"}};
constexpr Keyword kMethods[] = {
    {"printer-default", "Normal"}, {"direct-thermal", "Direct"}, {"ribbon", "Transfer"}};
// What is sensed is told with the media; this leaves it to the printer.
constexpr Keyword kSensing[] = {{"as-tracked", ""}, {"printer-default", "Normal"}};

constexpr VendorAttribute kAttributes[] = {
    {"halftone", "HalftoneType", Kind::kKeyword, kHalftones},
    {"brightness", "Brightness", Kind::kInteger, {}},
    {"mirror", "MirrorImage", Kind::kBoolean, kMirror},
    {"negative", "NegativeImage", Kind::kBoolean, kNegative},
    {"print-method", "MediaMethod", Kind::kKeyword, kMethods},
    {"media-sensing", "PaperType", Kind::kKeyword, kSensing},
};

/// More is lighter: in black-space grey a higher value is more ink, in white-space grey less.
int brightnessSign(const kelp_models::Model& model) {
    return model.polarity == Polarity::kBlackSpace ? -1 : 1;
}

int numberOf(std::string_view text, int otherwise) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : otherwise;
}

std::vector<const char*> keywordsOf(const kelp_models::Model& model,
                                    const VendorAttribute& attribute) {
    std::vector<const char*> keywords;
    if (const kelp_models::Option* option = model.findOption(attribute.option)) {
        for (const Keyword& keyword : attribute.keywords) {
            if (*keyword.choice == '\0' || option->find(keyword.choice) != nullptr) {
                keywords.push_back(keyword.keyword);
            }
        }
    }
    return keywords;
}

}  // namespace

std::span<const VendorAttribute> vendorAttributes() {
    return kAttributes;
}

bool hasAttribute(const kelp_models::Model& model, const VendorAttribute& attribute) {
    return attribute.kind == Kind::kInteger ? model.findOption(attribute.option) != nullptr
                                            : keywordsOf(model, attribute).size() > 1;
}

std::string defaultValue(const kelp_models::Model& model, const VendorAttribute& attribute) {
    const kelp_models::Option& option = *model.findOption(attribute.option);
    const std::string_view choice = option.choices[option.defaultChoice].name;
    if (attribute.kind == Kind::kInteger) {
        return std::to_string(brightnessSign(model) * numberOf(choice, 0));
    }
    for (const Keyword& keyword : attribute.keywords) {
        if (choice == keyword.choice) {
            return keyword.keyword;
        }
    }
    return attribute.keywords.front().keyword;
}

ipp_t* describeVendorAttributes(const kelp_models::Model& model) {
    ipp_t* attributes = ippNew();
    for (const VendorAttribute& attribute : kAttributes) {
        if (!hasAttribute(model, attribute)) {
            continue;
        }
        const std::string byDefault = std::string(attribute.name) + "-default";
        const std::string supported = std::string(attribute.name) + "-supported";
        const std::string value = defaultValue(model, attribute);
        if (attribute.kind == Kind::kBoolean) {
            ippAddBoolean(attributes, IPP_TAG_PRINTER, byDefault.c_str(), value == "true" ? 1 : 0);
            ippAddBoolean(attributes, IPP_TAG_PRINTER, supported.c_str(), 1);
        } else if (attribute.kind == Kind::kInteger) {
            ippAddInteger(attributes, IPP_TAG_PRINTER, IPP_TAG_INTEGER, byDefault.c_str(),
                          numberOf(value, 0));
            ippAddRange(attributes, IPP_TAG_PRINTER, supported.c_str(), -kBrightnessSteps,
                        kBrightnessSteps);
        } else {
            const std::vector<const char*> keywords = keywordsOf(model, attribute);
            ippAddString(attributes, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, byDefault.c_str(), nullptr,
                         value.c_str());
            ippAddStrings(attributes, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, supported.c_str(),
                          static_cast<int>(keywords.size()), nullptr, keywords.data());
        }
    }
    return attributes;
}

bool chooseByAttribute(const kelp_models::Model& model, const VendorAttribute& attribute,
                       std::string_view value, kelp_models::JobChoices& choices) {
    if (attribute.kind == Kind::kInteger) {
        constexpr int kNone = kBrightnessSteps + 1;
        const int number = numberOf(value, kNone);
        return number != kNone &&
               choices.choose(attribute.option, std::to_string(brightnessSign(model) * number));
    }
    for (const Keyword& keyword : attribute.keywords) {
        if (value == keyword.keyword) {
            return *keyword.choice == '\0' || choices.choose(attribute.option, keyword.choice);
        }
    }
    return false;
}

}  // namespace kelp_app
