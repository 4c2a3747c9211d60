// The decoder held to the literal one of tests/reference/ on data of all kinds.

#include <gtest/gtest.h>

#include <sstream>

#include "preview/graphic_decoder.h"
#include "tests/preview/decoded.h"
#include "tests/preview/random.h"
#include "tests/reference/graphic.h"

namespace {

using kelp_preview::Bitmap;
using kelp_preview::ByteReader;
using kelp_preview::Remarks;
using kelp_test::block;
using kelp_test::decode;
using kelp_test::Decoded;
using kelp_test::Random;
using kelp_test::rows;
using reference::Graphic;
using reference::readGraphic;

const std::string digits = "0123456789ABCDEFabcdef";
const std::string letters = "GHIJKLMNOPQRSTUVWXYghijklmnopqrstuvwxyz";

// Of the language, one byte in so many something else.
std::string random_data(Random& random, unsigned strange) {
    std::string data;
    for (unsigned count = random.below(60); count > 0; --count) {
        if (strange != 0 && random.below(strange) == 0) {
            data += static_cast<char>(random.below(256));
            continue;
        }
        switch (random.below(8)) {
            case 0:
                data += random.of(",,,!:::\n\r");
                break;
            case 1:
                data += random.of(letters);
                break;
            case 2:
                data += random.of("GHIJKLM");
                break;
            default:
                data += random.of(digits);
        }
    }
    return data;
}

// Without a fault: rows of digits, runs whose counts are split in many ways, fills, repeats.
std::string clean_data(Random& random, unsigned row_bytes, unsigned row_count) {
    std::string data;
    for (unsigned y = 0; y < row_count; ++y) {
        if (random.below(4) == 0) {
            data += ':';
            continue;
        }
        for (unsigned left = row_bytes * 2; left > 0;) {
            if (random.below(6) == 0) {
                data += random.of(",!");
                break;
            }
            unsigned run = 1 + random.below(left);
            left -= run;
            while (run > 1) {
                const bool is_long = run >= 20;
                const unsigned unit = is_long ? 20 : 1;
                const unsigned steps = 1 + random.below(std::min(run / unit, is_long ? 20U : 19U));
                data += static_cast<char>((is_long ? 'g' : 'G') + static_cast<int>(steps) - 1);
                run -= steps * unit;
                if (run == 0) {
                    break;
                }
                // a rest of one stands as a letter, too
                if (run == 1) {
                    data += 'G';
                    run = 0;
                }
            }
            data += random.of(digits);
        }
    }
    return data;
}

void expect_agreement(const std::string& data, unsigned row_bytes, unsigned row_count) {
    const Graphic expected = readGraphic(data, row_bytes, row_count);

    std::stringbuf buffer(data);
    ByteReader reader(buffer);
    Remarks warnings;
    const Bitmap bitmap = decodeGraphic(reader, row_bytes, row_count, warnings);
    ASSERT_EQ(rows(bitmap), expected.rows) << data;
    ASSERT_EQ(warnings.empty(), expected.clean) << data;
}

TEST(AgainstTheReference, DataWithoutAFaultMeanTheSame) {
    Random random(46);
    for (int round = 0; round < 3000; ++round) {
        const unsigned row_bytes = 1 + random.below(random.below(5) == 0 ? 900 : 8);
        const unsigned row_count = 1 + random.below(8);
        const std::string data = clean_data(random, row_bytes, row_count);
        ASSERT_TRUE(readGraphic(data, row_bytes, row_count).clean) << data;
        expect_agreement(data, row_bytes, row_count);
        ASSERT_FALSE(HasFatalFailure()) << round;
    }
}

TEST(AgainstTheReference, DamagedDataMeanTheSame) {
    Random random(47);
    for (int round = 0; round < 20000; ++round) {
        const unsigned row_bytes = 1 + random.below(8);
        const unsigned row_count = 1 + random.below(8);
        std::string data = clean_data(random, row_bytes, row_count);
        for (unsigned faults = 1 + random.below(3); faults > 0 && !data.empty(); --faults) {
            const unsigned place = random.below(static_cast<unsigned>(data.size()));
            switch (random.below(4)) {
                case 0:
                    data.resize(place);
                    break;
                case 1:
                    data.erase(place, 1 + random.below(4));
                    break;
                case 2:
                    data[place] = static_cast<char>(random.below(256));
                    break;
                default:
                    data.insert(place, random_data(random, 0));
            }
        }
        expect_agreement(data, row_bytes, row_count);
        ASSERT_FALSE(HasFatalFailure()) << round;
    }
}

TEST(AgainstTheReference, RandomDataMeanTheSame) {
    Random random(48);
    for (int round = 0; round < 20000; ++round) {
        expect_agreement(random_data(random, random.below(20)), 1 + random.below(30),
                         1 + random.below(20));
        ASSERT_FALSE(HasFatalFailure()) << round;
    }
}

TEST(AgainstTheReference, StreamsCutAnywhereGiveTheSameLabel) {
    Random random(49);
    int whole = 0;
    int without_label = 0;
    for (int round = 0; round < 5000; ++round) {
        const unsigned row_bytes = 1 + random.below(6);
        const unsigned row_count = 1 + random.below(6);
        const std::string data = clean_data(random, row_bytes, row_count);
        std::string stream = block(row_bytes * row_count, row_bytes, data);
        const std::size_t begin = stream.find(",\n") + 2;
        const bool is_cut = random.below(4) != 0;
        if (is_cut) {
            stream.resize(begin + random.below(static_cast<unsigned>(data.size()) + 1));
        }
        const Graphic expected = readGraphic(stream.substr(begin), row_bytes, row_count);
        const Decoded decoded = decode(stream);
        ASSERT_EQ(decoded.labels.size(), expected.rows.empty() ? 0U : 1U) << stream;
        ASSERT_EQ(decoded.warnings() > 0, is_cut) << stream;
        if (!expected.rows.empty()) {
            ASSERT_EQ(rows(*decoded.labels[0].dots), expected.rows) << stream;
        }
        whole += is_cut ? 0 : 1;
        without_label += expected.rows.empty() ? 1 : 0;
    }
    EXPECT_GT(whole, 500);
    EXPECT_GT(without_label, 100);
}

}  // namespace
