#include "filter/ppd_lookup.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/files.h"
#include "tests/support/ppd_file.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

class PpdLookup : public testing::Test {
  protected:
    // A description with its defaults marked or not.
    ppd_file_t* open_ppd(const Ppd& description, bool mark_defaults = true) {
        write_file(directory / "printer.ppd", description.text());
        ppd_.reset(ppdOpenFile((directory / "printer.ppd").c_str()));
        EXPECT_NE(ppd_, nullptr);
        if (mark_defaults) {
            ppdMarkDefaults(ppd_.get());
        }
        return ppd_.get();
    }

    const TempDir directory;

  private:
    struct Close {
        void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
    };
    std::unique_ptr<ppd_file_t, Close> ppd_;
};

std::string name_of(const ppd_choice_t* choice) {
    return choice != nullptr ? choice->choice : "-";
}

TEST_F(PpdLookup, AMarkedChoiceComesFirst) {
    ppd_file_t* const ppd = open_ppd(bare_ppd().option("PostAction", {"None", "Cut", "PeelOff"}));
    EXPECT_EQ(name_of(kelpPpdGetChoice(ppd, "PostAction")), "None");
    ppdMarkOption(ppd, "PostAction", "PeelOff");
    EXPECT_EQ(name_of(kelpPpdGetChoice(ppd, "PostAction")), "PeelOff");
}

TEST_F(PpdLookup, WithoutAMarkTheDefaultChoiceIsTaken) {
    ppd_file_t* const ppd =
        open_ppd(bare_ppd().option("PostAction", {"TearOff", "Cut"}), /*mark_defaults=*/false);
    ASSERT_EQ(ppdFindMarkedChoice(ppd, "PostAction"), nullptr);
    EXPECT_EQ(name_of(kelpPpdGetChoice(ppd, "PostAction")), "TearOff");
    EXPECT_STREQ(kelpPpdGetChoiceAsStrDefault(ppd, "PostAction", "x"), "TearOff");
}

TEST_F(PpdLookup, AnUnknownOptionHasNoChoice) {
    ppd_file_t* const ppd = open_ppd(bare_ppd());
    EXPECT_EQ(kelpPpdGetChoice(ppd, "PostAction"), nullptr);
    EXPECT_STREQ(kelpPpdGetChoiceAsStrDefault(ppd, "PostAction", "fallback"), "fallback");
    EXPECT_EQ(kelpPpdGetChoiceAsIntDefault(ppd, "PostAction", -17), -17);
    EXPECT_EQ(kelpPpdGetChoiceAsBoolDefault(ppd, "PostAction", true), 1);
    EXPECT_EQ(kelpPpdGetChoiceAsBoolDefault(ppd, "PostAction", false), 0);
}

TEST_F(PpdLookup, AnUnmarkedOptionWhoseDefaultIsNoChoiceHasNone) {
    ppd_file_t* const ppd =
        open_ppd(bare_ppd().option("PostAction", {"TearOff", "Cut"}), /*mark_defaults=*/false);
    ppd_option_t* const option = ppdFindOption(ppd, "PostAction");
    std::string("Absent").copy(option->defchoice, sizeof option->defchoice);
    EXPECT_EQ(kelpPpdGetChoice(ppd, "PostAction"), nullptr);
    EXPECT_STREQ(kelpPpdGetChoiceAsStrDefault(ppd, "PostAction", "fallback"), "fallback");
}

TEST_F(PpdLookup, WithoutADescriptionThereAreOnlyDefaults) {
    EXPECT_EQ(kelpPpdGetChoice(nullptr, "PageSize"), nullptr);
    EXPECT_STREQ(kelpPpdGetChoiceAsStrDefault(nullptr, "PageSize", "fallback"), "fallback");
    EXPECT_EQ(kelpPpdGetChoiceAsStrDefault(nullptr, "PageSize", nullptr), nullptr);
    EXPECT_EQ(kelpPpdGetChoiceAsIntDefault(nullptr, "Darkness", 9), 9);
    EXPECT_EQ(kelpPpdGetChoiceAsBoolDefault(nullptr, "MirrorImage", true), 1);
    EXPECT_EQ(kelpPpdGetChoiceAsBoolDefault(nullptr, "MirrorImage", false), 0);
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(nullptr, "Manufacturer", nullptr, "none"), "none");
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(nullptr, "Manufacturer", nullptr, 2.5), 2.5);
}

TEST_F(PpdLookup, AnIntegerIsReadFromTheChoicesName) {
    ppd_file_t* const ppd =
        open_ppd(bare_ppd().option("Darkness", {"12", "-3", "007", "5dots", "dark", "+4"}));
    const auto darkness = [ppd](const char* choice) {
        ppdMarkOption(ppd, "Darkness", choice);
        return kelpPpdGetChoiceAsIntDefault(ppd, "Darkness", 99);
    };
    EXPECT_EQ(darkness("12"), 12);
    EXPECT_EQ(darkness("-3"), -3);
    EXPECT_EQ(darkness("007"), 7);
    EXPECT_EQ(darkness("5dots"), 5);
    EXPECT_EQ(darkness("dark"), 0);
    EXPECT_EQ(darkness("+4"), 4);
}

TEST_F(PpdLookup, ABooleanIsAWordOrTheLowEightBitsOfANumber) {
    const std::pair<const char*, int> choices[] = {
        {"true", 1}, {"True", 1},   {"TRUE", 1}, {"yes", 1},    {"YES", 1}, {"false", 0},
        {"No", 0},   {"FALSE", 0},  {"no", 0},   {"1", 1},      {"0", 0},   {"2", 2},
        {"255", -1}, {"256", 0},    {"257", 1},  {"128", -128}, {"-1", -1}, {"127", 127},
        {"abc", 0},  {"truely", 0}, {"yes!", 0}, {"12x", 12}};
    for (const auto& [choice, value] : choices) {
        // An option of its own for each: libcups compares choices without regard to case.
        ppd_file_t* const ppd = open_ppd(bare_ppd().option("MirrorImage", {choice, "other"}));
        for (const bool fallback : {false, true}) {
            EXPECT_EQ(kelpPpdGetChoiceAsBoolDefault(ppd, "MirrorImage", fallback), value) << choice;
        }
    }
}

TEST_F(PpdLookup, AnAttributeIsItsValue) {
    ppd_file_t* const ppd = open_ppd(bare_ppd().attribute("kelpFilterOutputFile", "/tmp/rec"));
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpFilterOutputFile", nullptr, ""), "/tmp/rec");
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpAbsent", nullptr, "default"), "default");
    EXPECT_EQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpAbsent", nullptr, nullptr), nullptr);
}

TEST_F(PpdLookup, AnAttributeIsToldFromOthersBySpec) {
    ppd_file_t* const ppd =
        open_ppd(bare_ppd().attribute("kelpGap one", "1").attribute("kelpGap two", "2"));
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpGap", "one", ""), "1");
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpGap", "two", ""), "2");
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpGap", "three", "none"), "none");
}

TEST_F(PpdLookup, AnAttributeWithoutAValueIsItsDefault) {
    ppd_file_t* const ppd = open_ppd(bare_ppd().attribute("kelpGap", "1"));
    ppd_attr_t* const attribute = ppdFindAttr(ppd, "kelpGap", nullptr);
    ASSERT_NE(attribute, nullptr);
    char* const value = attribute->value;
    attribute->value = nullptr;
    EXPECT_STREQ(kelpPpdGetAttrAsStrDefault(ppd, "kelpGap", nullptr, "default"), "default");
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(ppd, "kelpGap", nullptr, 0.1), 0.1);
    attribute->value = value;
}

TEST_F(PpdLookup, AFloatingAttributeIsReadInDoublePrecision) {
    ppd_file_t* const ppd = open_ppd(bare_ppd()
                                         .attribute("kelpGap one", "25.4")
                                         .attribute("kelpGap two", "-1e-3mm")
                                         .attribute("kelpGap three", "wide"));
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(ppd, "kelpGap", "one", 7), 25.4);
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(ppd, "kelpGap", "two", 7), -0.001);
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(ppd, "kelpGap", "three", 7), 0.0);
    EXPECT_EQ(kelpPpdGetAttrAsFloatDefault(ppd, "kelpGap", "four", 7.25), 7.25);
}

}  // namespace
}  // namespace kelp_test
