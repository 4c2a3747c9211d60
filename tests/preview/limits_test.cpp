// Sizes that are refused.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/preview/decoded.h"

namespace {

using kelp_preview::StreamRefused;
using kelp_test::block;
using kelp_test::decode;

// The place and words of the refusal.
std::string refusal(const std::string& stream, std::uint64_t max_dots = 200'000'000) {
    try {
        decode(stream, max_dots);
        return "taken";
    } catch (const StreamRefused& refused) {
        return refused.what();
    }
}

std::string graphic(const std::string& sizes) {
    return "\n\n^XX~DGR:A.GRF," + sizes + ",1^XGR:A.GRF^XZ";
}

TEST(Limits, AGraphicWithoutRowsIsRefused) {
    EXPECT_EQ(refusal(graphic("0,2")), "byte 5: a graphic of 0 bytes, 2 a row, has no rows");
    EXPECT_EQ(refusal(graphic("2,0")), "byte 5: a graphic of 2 bytes, 0 a row, has no rows");
    EXPECT_EQ(refusal(graphic("2,3")), "byte 5: a graphic of 2 bytes, 3 a row, has no rows");
    EXPECT_EQ(refusal(graphic(",")), "byte 5: a graphic of 0 bytes, 0 a row, has no rows");
    EXPECT_EQ(refusal(graphic("-4,2")), "byte 5: a graphic of 0 bytes, 2 a row, has no rows");
}

TEST(Limits, AGraphicOverTheLimitIsRefusedAndOneAtItIsNot) {
    EXPECT_EQ(refusal(block(5, 1, ",,,,,"), 40), "taken");
    EXPECT_EQ(refusal("^XX~DGR:A.GRF,6,1,,,,,,,^XZ", 40),
              "byte 3: a graphic of 6 bytes, 1 a row, is over the limit of 40 dots");
    // 25,000,000 bytes are 200 million dots
    EXPECT_EQ(refusal(graphic("25000000,1000")), "taken");
    EXPECT_NE(refusal(graphic("25000001,1000")), "taken");
}

TEST(Limits, NoLimitIsOver31BitsOfDots) {
    const std::uint64_t all = ~std::uint64_t{0};
    EXPECT_EQ(
        refusal(graphic("268435457,1"), all),
        "byte 5: a graphic of 268435457 bytes, 1 a row, is over the limit of 2147483648 dots");
    EXPECT_NE(refusal(graphic("99999999999999999999999,1"), all), "taken");
    EXPECT_NE(refusal(graphic("18446744073709551615,18446744073709551615"), all), "taken");
}

TEST(Limits, StoredGraphicsCountTogetherAndAReplacedOneNoMore) {
    const std::string one = "~DGA,3,1,123456";
    EXPECT_NE(refusal(one + "~DGB,3,1,123456", 40), "taken");
    EXPECT_EQ(refusal(one + one + one, 40), "taken");
}

TEST(Limits, ALabelOverTheLimitIsRefused) {
    const std::string dot = "~DGD,1,1,80^XA";
    EXPECT_EQ(refusal(dot + "^FO0,4^XGD^XZ", 40), "taken");  // 8 x 5 dots
    EXPECT_EQ(refusal(dot + "^FO0,5^XGD^XZ", 40),
              "byte 20: the label is over the limit of 40 dots");
    EXPECT_NE(refusal(dot + "^FO99999999999999999999,99999999999999999999^XGD^XZ"), "taken");
    EXPECT_NE(refusal(dot + "^FO200000000,200000000^XGD^XZ"), "taken");
    EXPECT_EQ(refusal(dot + "^XGD,2,2^XZ", 40), "taken");  // 16 x 2
    EXPECT_NE(refusal(dot + "^XGD,3,3^XZ", 40), "taken");  // 24 x 3
}

TEST(Limits, ALabelCannotRecallAGraphicForEver) {
    std::string stream = "~DGD,5,1,,,,,,^XA";
    for (int i = 0; i < 100; ++i) {
        stream += "^XGD";
    }
    EXPECT_NE(refusal(stream + "^XZ", 40), "taken");
}

TEST(Limits, LabelsBeforeTheRefusalAreHandedOn) {
    std::stringbuf stream(block(2, 2, "1234") + graphic("0,0"));
    kelp_preview::StreamDecoder decoder(stream, {});
    EXPECT_TRUE(decoder.next());
    EXPECT_THROW(decoder.next(), StreamRefused);
}

}  // namespace
