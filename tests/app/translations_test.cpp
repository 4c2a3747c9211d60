#include "app/translations.h"

#include <gtest/gtest.h>

#include "app/vendor_attributes.h"

namespace kelp_app {
namespace {

bool has_line(const std::string& lines, const std::string& line) {
    return ("\n" + lines).find("\n" + line + "\n") != std::string::npos;
}

TEST(AppTranslations, AreTheDriversTexts) {
    EXPECT_TRUE(has_line(stringsOf("en"), "\"halftone\" = \"Shades of grey\";")) << stringsOf("en");
    EXPECT_TRUE(has_line(stringsOf("de"), "\"halftone\" = \"Grautöne\";")) << stringsOf("de");
}

TEST(AppTranslations, HaveEveryAttributeAndEveryChoiceInEveryLanguage) {
    for (const char* language : kelp_models::languages()) {
        const std::string lines = stringsOf(language);
        for (const VendorAttribute& attribute : vendorAttributes()) {
            EXPECT_NE(lines.find(std::string("\"") + attribute.name + "\" = "), std::string::npos)
                << language << " " << attribute.name;
            for (const Keyword& keyword : attribute.keywords) {
                if (attribute.kind == VendorAttribute::Kind::kKeyword && *keyword.choice != '\0') {
                    const std::string key = std::string(attribute.name) + "." + keyword.keyword;
                    EXPECT_NE(lines.find("\"" + key + "\" = "), std::string::npos)
                        << language << " " << key;
                }
            }
        }
    }
}

}  // namespace
}  // namespace kelp_app
