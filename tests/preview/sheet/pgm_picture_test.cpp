// PGM pictures: a sample is its part of the largest, to the nearest level.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pictures/picture_formats.h"
#include "tests/preview/sheet/picture_files.h"

namespace {

using namespace std::string_literals;
using kelp_test::refusal_by;
using Levels = std::vector<int>;

Levels levels(const std::string& file) {
    return kelp_test::levels(pictureOfPgm, file);
}

TEST(Pgm, BinaryOfUpTo256LevelsHasOneByteASample) {
    EXPECT_EQ(levels("P5\n3 2\n255\n\x00\x01\x7F\x80\xFE\xFF"s),
              (Levels{0, 1, 127, 128, 254, 255}));
    EXPECT_EQ(levels("P5 2 1 1 \x00\x01"s), (Levels{0, 255}));
    EXPECT_EQ(levels("P5 3 1 100 \x00\x32\x64"s), (Levels{0, 128, 255}));  // 127.5 upwards
}

TEST(Pgm, BinaryOfMoreLevelsHasTwoBytesASample) {
    // 1 of 300 is 0.85, 150 is 127.5, 299 is 254.15
    EXPECT_EQ(levels("P5 4 1 300\n\x00\x01\x00\x96\x01\x2B\x01\x2C"s), (Levels{1, 128, 254, 255}));
    EXPECT_EQ(levels("P5 3 1 65535\n\x00\xFF\x80\x80\xFF\xFF"s), (Levels{1, 128, 255}));
    EXPECT_EQ(levels("P5 1 1 256\n\x00\x80"s), (Levels{128}));
}

TEST(Pgm, PlainHasNumbers) {
    EXPECT_EQ(levels("P2\n3 1\n255\n0 128\n255\n"), (Levels{0, 128, 255}));
    EXPECT_EQ(levels("P2 2 1 1 0 1"), (Levels{0, 255}));
    EXPECT_EQ(levels("P2 3 1 300\t1\v150\f299"), (Levels{1, 128, 254}));
    EXPECT_EQ(levels("P2 2 1 65535\r\n65535 0"), (Levels{255, 0}));
}

TEST(Pgm, CommentsInTheHeadAreSkipped) {
    EXPECT_EQ(levels("P5 # a 7 7 7\n#\n#another\n 2# 9\n1\n#x\n255\n\x05\x06"), (Levels{5, 6}));
    EXPECT_EQ(levels("P2\n#1\n1 1 10#2\n10#3\n"), (Levels{255}));
}

TEST(Pgm, OneWhiteSpaceEndsTheHeadOfABinaryOne) {
    // 10, 32 and '#' are samples.
    EXPECT_EQ(levels("P5 3 1 255\n\n #"), (Levels{10, 32, 35}));
}

TEST(Pgm, WhatFollowsThePictureIsIgnored) {
    EXPECT_EQ(levels("P5 1 1 255\nAP5 1 1 255\nB"), (Levels{65}));
    EXPECT_EQ(levels("P2 1 1 255 65 66"), (Levels{65}));
}

TEST(Pgm, BrokenOnesAreRefusedWithTheReason) {
    const std::string early = "a broken PGM: it ends early";
    const std::string missing = "a broken PGM: a number is missing";
    const std::string largest = "a broken PGM: its largest sample is not 1 to 65535";
    for (const auto& [file, reason] : std::vector<std::pair<std::string, std::string>>{
             {"P5", early},
             {"P5 3", early},
             {"P5 3 1", early},
             {"P5 3 1 255", early},
             {"P5 3 1 255\nab", early},
             {"P5 3 1 256\nabcde", early},
             {"P5 # no end", early},
             {"P2 3 1 255 1 2", early},
             {"P2 3 1 255 1 2 ", early},
             {"P5 x", missing},
             {"P5 -3 1 255 aaa", missing},
             {"P2 2 1 255 1 x  ", missing},
             {"P5 1 1 0 a", largest},
             {"P5 1 1 65536 aa", largest},
             {"P5 99999999999999999999 1 255 a", "a broken PGM: a number is too large"},
             {"P2 1 1 9 10", "a broken PGM: a sample is over the largest"},
             {"P5 1 1 9\n\x0A", "a broken PGM: a sample is over the largest"},
             {"P5 0 1 255\n", "a picture without pixels"},
             {"P5 1 0 255\n", "a picture without pixels"}}) {
        EXPECT_EQ(refusal_by(pictureOfPgm, file), reason) << file;
    }
}

TEST(Pgm, OverTheLimitIsRefusedAndOneAtItIsNot) {
    EXPECT_EQ(refusal_by(pictureOfPgm, "P5 3 2 255\nabcdef", 6), "taken");
    EXPECT_EQ(refusal_by(pictureOfPgm, "P5 3 2 255\nabcdef", 5),
              "a picture of 3 x 2 pixels is over the limit of 5");
    EXPECT_EQ(refusal_by(pictureOfPgm, "P5 2147483647 2147483647 255\n", ~std::uint64_t{0} >> 1),
              "a broken PGM: it ends early");
}

}  // namespace
