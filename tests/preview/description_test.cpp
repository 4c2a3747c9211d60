#include "preview/description.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "preview/description_json.h"
#include "tests/preview/decoded.h"

namespace {

using kelp_preview::asJson;
using kelp_preview::asText;
using kelp_preview::describe;
using kelp_preview::Description;
using Settings = kelp_preview::Setup;  // a test has a Setup of its own
using kelp_test::block;
using kelp_test::decode;

// 8 dots are 8 / 203 in = 1.00099 mm; 4 of 16 dots are black; 4 digits and a line feed bring 2
// bytes.
Description small() {
    return describe(decode("SIZE 50.0 mm, 30.0 mm\r\n^PW399\n^MNM\n^MTT\n^MMP,N\n^POI\n^PR2,3\n" +
                           block(2, 1, "F000"))
                        .labels.at(0));
}

TEST(Description, TellsEverythingInLines) {
    EXPECT_EQ(asText(small(), 7),
              "Label 7\n"
              "  size:             8 x 2 dots, 1.0 x 0.3 mm\n"
              "  page:             width 399, length not set, 50.0 mm, 30.0 mm\n"
              "  copies:           1\n"
              "  media sensing:    marks\n"
              "  orientation:      turned by 180 degrees\n"
              "  speed:            2\n"
              "  darkness:         not set\n"
              "  print method:     thermal transfer\n"
              "  after printing:   peel off\n"
              "  graphic:          5 bytes for 2, ratio 0.40\n"
              "  black dots:       25.00 %\n");
}

TEST(Description, TellsTheSameInJson) {
    const auto json = asJson(small());
    EXPECT_EQ(json["width_dots"], 8);
    EXPECT_EQ(json["height_dots"], 2);
    EXPECT_NEAR(json["width_mm"].get<double>(), 1.00099, 1e-5);
    EXPECT_NEAR(json["height_mm"].get<double>(), 0.250246, 1e-6);
    EXPECT_EQ(json["page_width_dots"], 399);
    EXPECT_TRUE(json["page_length_dots"].is_null());
    EXPECT_EQ(json["size_line"], "50.0 mm, 30.0 mm");
    EXPECT_EQ(json["copies"], 1);
    EXPECT_EQ(json["media_sensing"], "marks");
    EXPECT_EQ(json["orientation"], "turned by 180 degrees");
    EXPECT_EQ(json["speed"], "2");
    EXPECT_TRUE(json["darkness"].is_null());
    EXPECT_EQ(json["print_method"], "thermal transfer");
    EXPECT_EQ(json["after_printing"], "peel off");
    EXPECT_EQ(json["graphic_bytes"], 5);
    EXPECT_EQ(json["dot_bytes"], 2);
    EXPECT_EQ(json["compression_ratio"], 0.4);
    EXPECT_EQ(json["black_dots"], 4);
    EXPECT_EQ(json["black_share"], 0.25);
    EXPECT_TRUE(json["picture"].is_null());

    Description another = small();
    another.label.copies = 3;
    another.picture = "p.png";
    another.label.findings.warnings.add(5, "odd");
    EXPECT_EQ(asJson(another)["copies"], 3);
    EXPECT_EQ(asJson(another)["picture"], "p.png");
    EXPECT_EQ(asJson(another)["warnings"][0]["offset"], 5);
}

TEST(Description, NamesEachKnownValueAndShowsOthersAsTheyAre) {
    const auto with = [](std::string Settings::*member, const char* value) {
        Settings setup;
        setup.*member = value;
        return setup;
    };
    using namespace kelp_preview;
    EXPECT_EQ(mediaSensingName(with(&Settings::mediaSensing, "Y")), "gaps");
    EXPECT_EQ(mediaSensingName(with(&Settings::mediaSensing, "N")), "continuous");
    EXPECT_EQ(mediaSensingName(with(&Settings::mediaSensing, "A")), "A");
    EXPECT_EQ(orientationName(with(&Settings::orientation, "N")), "normal");
    EXPECT_EQ(printMethodName(with(&Settings::printMethod, "D")), "direct thermal");
    EXPECT_EQ(afterPrintName(with(&Settings::afterPrint, "T")), "tear off");
    EXPECT_EQ(afterPrintName(with(&Settings::afterPrint, "C")), "cut");
    EXPECT_EQ(afterPrintName(Settings{}), "");
}

TEST(Description, ListsWhatWasFoundAndHowMuchMoreThereWas) {
    kelp_preview::Findings findings;
    findings.warnings.add(12, "odd");
    for (int i = 0; i < 102; ++i) {
        findings.unknownCommands.add(3, "^QQ");
    }
    const std::string text = asText(findings);
    EXPECT_EQ(text.find("  unknown commands:\n    byte 3: ^QQ\n"), 0U);
    EXPECT_NE(text.find("    and 2 more\n  warnings:\n    byte 12: odd\n"), std::string::npos);
    const auto json = asJson(findings);
    EXPECT_EQ(json["unknown_commands"].size(), 100U);
    EXPECT_EQ(json["unknown_commands"][0]["command"], "^QQ");
    EXPECT_EQ(json["unknown_commands_not_listed"], 2);
    EXPECT_EQ(json["warnings"][0]["offset"], 12);
    EXPECT_EQ(json["warnings"][0]["text"], "odd");
}

}  // namespace
