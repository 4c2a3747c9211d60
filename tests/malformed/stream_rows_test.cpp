// Streams whose pixels are not what they should be, in every version and both byte orders.
//
// A row of version 2 begins with the number of rows more that are like it. Then come runs: 00 to 7F
// repeat the next pixel that many times more, 81 to FF are 257 less that many pixels as they are,
// 80 clears the rest of the row.

#include <gtest/gtest.h>

#include "tests/malformed/malformed_job.h"
#include "tests/malformed/raw_streams.h"

namespace kelp_test {
namespace {

constexpr StreamKind big{2, true};
constexpr StreamKind little{2, false};

cups_page_header2_t tiny_header() {
    return page_header(tiny_page());
}

// One compressed page.
Spoil packed(const StreamKind& kind, const std::string& digits) {
    return raster(stream(kind, tiny_header(), hex(digits)));
}

// A compressed page, then the tiny one: what the first leaves unread would spoil the second.
Spoil packed_and_tiny(const StreamKind& kind, const std::string& digits) {
    return raster(stream(kind, tiny_header(), hex(digits)) + header_bytes(kind, tiny_header()) +
                  hex("00 0F FF  00 03 FF 0B 00"));
}

Spoil packed_in(cups_cspace_t space, const std::string& digits) {
    cups_page_header2_t header = tiny_header();
    header.cupsColorSpace = space;
    return raster(stream(big, header, hex(digits)));
}

std::string picture(const std::string& rows) {
    return SetupBlock().text() + Graphic{.rows = rows}.text();
}

std::vector<MalformedJob> rows_of(const StreamKind& kind) {
    const std::string feeds = preamble();
    const std::string tiny = tiny_page_output();
    const std::string no_pixels = feeds + SetupBlock().text();
    return {
        {"GoodPage", packed(kind, "00 0F FF  00 03 FF 0B 00"), 0, "", feeds + tiny},
        {"NoPixelsAtAll", packed(kind, ""), 0, "", no_pixels},
        {"OnlyARepetition", packed(kind, "01"), 0, "", no_pixels},
        {"ARunWithoutItsPixel", packed(kind, "01 0F"), 0, "", no_pixels},
        {"ARowOfHalfItsPixels", packed(kind, "01 07 FF"), 0, "", no_pixels},
        {"TheSecondRowMissing", packed(kind, "00 0F FF"), 0, "", no_pixels},
        {"TheSecondRowCut", packed(kind, "00 0F FF  00 03 FF 0A 00"), 0, "", no_pixels},
        {"APixelTooFewAsTheyAre", packed(kind, "01 F1 " + std::string(30, 'F')), 0, "", no_pixels},
        // Runs end with the row.
        {"ARunOfOneTooMany", packed_and_tiny(kind, "01 10 FF"), 0, "",
         feeds + picture("JF:") + tiny},
        {"ARunOfTheMost", packed_and_tiny(kind, "01 7F FF"), 0, "", feeds + picture("JF:") + tiny},
        {"ASecondRunTooLong", packed_and_tiny(kind, "01 07 FF 7F 00"), 0, "",
         feeds + picture("HF,HF,") + tiny},
        {"PixelsAsTheyAreToTheRowsEnd",
         packed_and_tiny(kind, "01 81 FFFFFFFF 00000000 00000000 00000000"), 0, "",
         feeds + picture("F0,F0,") + tiny},
        // Repetitions end with the page.
        {"OneRepetitionTooMany", packed_and_tiny(kind, "02 03 FF 0B 00"), 0, "",
         feeds + picture("F0,F0,") + tiny},
        {"RepetitionsOfTheMost", packed_and_tiny(kind, "FF 03 FF 0B 00"), 0, "",
         feeds + picture("F0,F0,") + tiny},
        {"TheLastRowRepeated", packed_and_tiny(kind, "00 0F FF  FF 03 FF 0B 00"), 0, "",
         feeds + picture("JFF0,") + tiny},
        // In black space what is cleared is not printed.
        {"ARowCleared", packed_and_tiny(kind, "01 80"), 0, "", feeds + picture(",,") + tiny},
        {"TheRestOfARowCleared", packed_and_tiny(kind, "01 03 FF 80"), 0, "",
         feeds + picture("F0,F0,") + tiny},
        {"ClearedPerRow", packed_and_tiny(kind, "00 80 00 0F FF"), 0, "",
         feeds + picture(",:") + tiny},
        // Read as runs, 44 44 44 is 69 rows of 69 pixels of a light grey.
        {"NoCompressionAtAll", packed(kind, std::string(64, '4')), 0, "", feeds + picture(",,")},
    };
}

std::vector<MalformedJob> other_rows() {
    const std::string feeds = preamble();
    const std::string tiny = tiny_page_output();
    const std::string no_pixels = feeds + SetupBlock().text();
    const std::string pixels = tiny_page().pixels;
    const cups_page_header2_t header = tiny_header();
    std::vector<MalformedJob> rows;
    for (const unsigned version : {1U, 3U}) {
        for (const bool big_endian : {false, true}) {
            const StreamKind kind{version, big_endian};
            const std::string name =
                "Version" + std::to_string(version) + (big_endian ? "Big" : "Little");
            rows.push_back({name, raster(stream(kind, header, pixels)), 0, "", feeds + tiny});
            rows.push_back({name + "OnePixelShort",
                            raster(stream(kind, header, pixels.substr(0, pixels.size() - 1))), 0,
                            "", no_pixels});
            rows.push_back({name + "OnePixelLong", raster(stream(kind, header, pixels + "x")), 0,
                            "", feeds + tiny});
        }
    }
    const std::string good = sync_word({3, false}) + header_bytes({3, false}, header) + pixels;
    const std::vector<MalformedJob> single{
        // 8 bits a color are 2^27 in the other order: libcups refuses that.
        {"HeaderInTheOtherByteOrder",
         raster(sync_word({3, true}) + header_bytes({3, false}, header) + pixels), 0, "", feeds},
        {"VersionFour", raster("RaS4" + good.substr(4)), 0, "", feeds},
        {"VersionZero", raster("RaS0" + good.substr(4)), 0, "", feeds},
        {"LowerCase", raster("ras3" + good.substr(4)), 0, "", feeds},
        {"AByteBefore", raster("\n" + good), 0, "", feeds},
        // All numbers move by one: the bits a color are 0, which libcups refuses.
        {"SyncWordTwice", raster(good.substr(0, 4) + good), 0, "", feeds},
        {"TwoStreamsInOne", raster(good + good), 0, "", feeds + tiny},
        {"AllOnes", raster(good.substr(0, 4) + std::string(5000, '\xFF')), 0, "", feeds},
        {"AllZeros", raster(good.substr(0, 4) + std::string(5000, '\0')), 0, "", feeds},
        {"ClearedInWhiteSpace", packed_in(CUPS_CSPACE_W, "01 80"), 0, "", feeds + picture("JF:")},
        {"ClearedInRgb", packed_in(CUPS_CSPACE_RGB, "01 80"), 0, "", feeds + picture("JF:")},
        {"ClearedInNoSpace", packed_in(static_cast<cups_cspace_t>(62), "01 80"), 0, "",
         feeds + picture(",,")},
    };
    rows.insert(rows.end(), single.begin(), single.end());
    return rows;
}

class MalformedStream : public testing::TestWithParam<MalformedJob> {};

TEST_P(MalformedStream, EndsAsInTheTable) {
    expect_as_in(GetParam());
}

INSTANTIATE_TEST_SUITE_P(PackedBigEndian, MalformedStream, testing::ValuesIn(rows_of(big)),
                         row_name<MalformedJob>);
INSTANTIATE_TEST_SUITE_P(PackedLittleEndian, MalformedStream, testing::ValuesIn(rows_of(little)),
                         row_name<MalformedJob>);
INSTANTIATE_TEST_SUITE_P(Kind, MalformedStream, testing::ValuesIn(other_rows()),
                         row_name<MalformedJob>);

// A stream of the kind, cut at every byte: the setup block is printed from the whole header on, the
// picture with the last byte.
void cut_everywhere(const StreamKind& kind, const std::string& pixels) {
    const std::string full = stream(kind, tiny_header(), pixels);
    const std::size_t header_end = full.size() - pixels.size();
    const Sandbox sandbox;
    Job job;
    for (std::size_t length = 0; length < full.size(); ++length) {
        // Within a long header, what matters is its ends.
        if (kind.version > 1 && length > 8 && length + 8 < header_end && length % 37 != 0) {
            continue;
        }
        job.raster = full.substr(0, length);
        const JobResult result = sandbox.run(job);
        EXPECT_EQ(result.exit_status, 0) << "cut at " << length;
        EXPECT_EQ(complaints(result.error), "") << "cut at " << length;
        EXPECT_EQ(result.output, preamble() + (length < header_end ? "" : SetupBlock().text()))
            << "cut at " << length;
    }
    job.raster = full;
    EXPECT_EQ(sandbox.run(job).output, preamble() + tiny_page_output());
}

TEST(CutAnywhere, OfVersionOnePrintsNoPicture) {
    cut_everywhere({1, true}, tiny_page().pixels);
}

TEST(CutAnywhere, OfVersionTwoPrintsNoPicture) {
    cut_everywhere(big, hex("00 0F FF  00 03 FF F5 00 00 00 00 00 00 00 00 00 00 00 00"));
    cut_everywhere(little, hex("00 FF FFFF 0D FF  00 F1 FFFFFFFF 00000000 00000000 00000000"));
}

TEST(CutAnywhere, OfVersionThreePrintsNoPicture) {
    cut_everywhere({3, true}, tiny_page().pixels);
}

}  // namespace
}  // namespace kelp_test
