// Whatever the bytes are: an answer, within the limits.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/preview/decoded.h"

namespace {

using kelp_preview::Label;
using kelp_preview::StreamRefused;
using kelp_test::block;
using kelp_test::decode;
using kelp_test::Decoded;
using kelp_test::rows;
using Rows = std::vector<std::string>;

TEST(DamagedStream, EveryTruncationGivesTheWholeRowsThereAreAndAWarning) {
    // five rows, whose data end at these places of the data
    const std::string data = "JF1234F0,:!";
    const std::size_t ends[] = {2, 6, 9, 10, 11};
    const Rows all = {"FFFF", "1234", "F000", "F000", "FFFF"};
    const std::string stream = block(10, 2, data);
    const std::size_t begin = stream.find(data);
    const std::size_t header_end = begin - 1;  // the line feed behind the last comma
    const std::size_t label_end = stream.find("^XZ") + 3;
    for (std::size_t length = 0; length < stream.size(); ++length) {
        const Decoded decoded = decode(stream.substr(0, length));
        const auto there = static_cast<std::size_t>(
            std::count_if(std::begin(ends), std::end(ends),
                          [&](std::size_t end) { return begin + end <= length; }));
        if (length < begin || there == 0) {
            ASSERT_TRUE(decoded.labels.empty()) << length;
        } else {
            ASSERT_EQ(decoded.labels.size(), 1U) << length;
            ASSERT_EQ(rows(*decoded.labels[0].dots),
                      Rows(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(there)))
                << length;
        }
        if (length > 3 && length < label_end) {
            ASSERT_GT(decoded.warnings(), 0U) << length;
        } else if (length >= label_end) {
            ASSERT_EQ(decoded.warnings(), 0U) << length;
        }
        ASSERT_TRUE(length < header_end || length >= label_end || decoded.warnings() > 0);
    }
}

// Labels and graphics stay within the limit, rows have their length, remarks are printable.
void check(const Decoded& decoded, std::uint64_t max_dots) {
    for (const Label& label : decoded.labels) {
        ASSERT_GT(label.dots->height, 0U);
        ASSERT_LE(label.dots->width * label.dots->height, max_dots);
        ASSERT_EQ(label.dots->bytes.size(), label.dots->rowBytes() * label.dots->height);
        for (const auto& warning : label.findings.warnings.kept()) {
            for (const char c : warning.text) {
                ASSERT_TRUE(c >= ' ' && c <= '~');
            }
        }
    }
}

// False for a refused stream.
bool survives(const std::string& stream) {
    constexpr std::uint64_t max_dots = 20000;
    try {
        check(decode(stream, max_dots), max_dots);
        return true;
    } catch (const StreamRefused& refused) {
        EXPECT_LT(refused.offset, stream.size());
        return false;
    }
}

TEST(DamagedStream, RandomBytesDoNoHarm) {
    std::mt19937 random(42);
    for (int round = 0; round < 10000; ++round) {
        std::string stream(random() % 200, '\0');
        for (char& c : stream) {
            c = static_cast<char>(random());
        }
        survives(stream);
        ASSERT_FALSE(HasFatalFailure()) << round;
    }
}

TEST(DamagedStream, RandomPiecesOfStreamsDoNoHarm) {
    const char* const pieces[] = {
        "^XX",       "^XA",      "^XZ",         "^PQ",    "^PW", "^LL",     "^MN",   "^PO",
        "I",         "^FO",      "^XG",         "~DG",    "A",   "R:B.GRF", ",",     ",",
        ",",         "1",        "2",           "8",      "20",  "\r\n",    ":",     "!",
        "G",         "z",        "g",           "F",      "0",   "5a",      "SIZE ", "99999",
        "~DGA,8,2,", "^XGA,3,2", "~DGB,9,3,zF", "^FO7,3", "\xFF"};
    std::mt19937 random(43);
    int taken = 0;
    int with_labels = 0;
    for (int round = 0; round < 10000; ++round) {
        std::string stream;
        for (auto count = random() % 40; count > 0; --count) {
            stream += pieces[random() % std::size(pieces)];
        }
        taken += survives(stream) ? 1 : 0;
        with_labels += stream.find("~DGA,8,2,:") != std::string::npos ? 1 : 0;
        ASSERT_FALSE(HasFatalFailure()) << stream;
    }
    EXPECT_GT(taken, 1000);
    EXPECT_GT(with_labels, 10);
}

TEST(DamagedStream, AByteChangedAnywhereDoesNoHarm) {
    const std::string stream = block(10, 2, "JF1234F0,:!");
    for (std::size_t place = 0; place < stream.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = stream;
            changed[place] = static_cast<char>(byte);
            survives(changed);
            ASSERT_FALSE(HasFatalFailure()) << place << " " << byte;
        }
    }
}

}  // namespace
