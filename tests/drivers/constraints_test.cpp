// Which choices exclude each other.

#include <set>
#include <tuple>

#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

class Constraints : public testing::TestWithParam<std::string> {
  protected:
    bool conflict(const char* option1, const char* choice1, const char* option2,
                  const char* choice2) {
        OpenPpd ppd = open_ppd(GetParam());
        ppdMarkOption(ppd.get(), option1, choice1);
        ppdMarkOption(ppd.get(), option2, choice2);
        return ppdConflicts(ppd.get()) > 0;
    }
    bool is_label() const { return GetParam().rfind("label", 0) == 0; }
};

INSTANTIATE_TEST_SUITE_P(Drivers, Constraints, testing::ValuesIn(every_model()), test_name);

TEST_P(Constraints, LetAFreshQueuePrint) {
    EXPECT_EQ(ppdConflicts(open_ppd(GetParam()).get()), 0);
}

// A gap of 0 makes any media continuous.
TEST_P(Constraints, NeedAGapForSensing) {
    EXPECT_TRUE(conflict("PaperType", "LabelGaps", "GapsHeight", "0"));
    EXPECT_TRUE(conflict("PaperType", "LabelMark", "GapsHeight", "0"));
    EXPECT_FALSE(conflict("PaperType", "Normal", "GapsHeight", "0"));
    EXPECT_FALSE(conflict("PaperType", "Continue", "GapsHeight", "0"));
}

TEST_P(Constraints, LetContinuousMediaHaveNoGap) {
    const OpenPpd ppd = open_ppd(GetParam());
    for (const std::string& gap : choice_names(ppd.get(), "GapsHeight")) {
        EXPECT_EQ(conflict("PaperType", "Continue", "GapsHeight", gap.c_str()), gap != "0") << gap;
        if (gap != "0") {
            EXPECT_FALSE(conflict("PaperType", "LabelGaps", "GapsHeight", gap.c_str())) << gap;
            EXPECT_FALSE(conflict("PaperType", "LabelMark", "GapsHeight", gap.c_str())) << gap;
        }
    }
}

TEST_P(Constraints, LetOnlyLabelsBePeeled) {
    if (is_label()) {
        EXPECT_TRUE(conflict("PaperType", "Continue", "PostAction", "PeelOff"));
        EXPECT_FALSE(conflict("PaperType", "LabelGaps", "PostAction", "PeelOff"));
        EXPECT_FALSE(conflict("PaperType", "LabelMark", "PostAction", "PeelOff"));
    }
    for (const char* action : {"Normal", "TearOff", "Cut"}) {
        OpenPpd ppd = open_ppd(GetParam());
        ppdMarkOption(ppd.get(), "PaperType", "Continue");
        ppdMarkOption(ppd.get(), "GapsHeight", "0");
        ppdMarkOption(ppd.get(), "PostAction", action);
        EXPECT_EQ(ppdConflicts(ppd.get()), 0) << action;
    }
}

// Each names options and choices that exist, and stands in both orders, as some dialogs need it.
TEST_P(Constraints, NameWhatExists) {
    const OpenPpd ppd = open_ppd(GetParam());
    std::set<std::tuple<std::string, std::string, std::string, std::string>> all;
    for (int i = 0; i < ppd->num_consts; ++i) {
        const ppd_const_t& entry = ppd->consts[i];
        EXPECT_NE(ppdFindChoice(ppdFindOption(ppd.get(), entry.option1), entry.choice1), nullptr)
            << entry.option1 << ' ' << entry.choice1;
        all.emplace(entry.option1, entry.choice1, entry.option2, entry.choice2);
    }
    EXPECT_EQ(all.size(), is_label() ? 22U : 20U);
    for (const auto& [option1, choice1, option2, choice2] : all) {
        EXPECT_TRUE(all.contains({option2, choice2, option1, choice1})) << option1 << choice1;
    }
}

}  // namespace
}  // namespace kelp_test
