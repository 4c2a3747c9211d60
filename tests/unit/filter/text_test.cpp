#include "filter/text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace kelp_test {
namespace {

TEST(Basename, OfNullIsNull) {
    EXPECT_EQ(kelpPathGetBasename(nullptr), nullptr);
}

TEST(Basename, IsWhatStandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_STREQ(kelpPathGetBasename("a/b\\c"), "c");
    EXPECT_STREQ(kelpPathGetBasename("a\\b/c"), "c");
    EXPECT_STREQ(kelpPathGetBasename("/usr/lib/cups/filter/rastertokelp"), "rastertokelp");
    EXPECT_STREQ(kelpPathGetBasename("C:\\filters\\rastertokelp.exe"), "rastertokelp.exe");
    EXPECT_STREQ(kelpPathGetBasename("/one"), "one");
    EXPECT_STREQ(kelpPathGetBasename("\\one"), "one");
    EXPECT_STREQ(kelpPathGetBasename("a//b"), "b");
}

TEST(Basename, OfAPathWithoutSeparatorIsThePath) {
    EXPECT_STREQ(kelpPathGetBasename("abc"), "abc");
    EXPECT_STREQ(kelpPathGetBasename(""), "");
}

TEST(Basename, BehindATrailingSeparatorIsEmpty) {
    EXPECT_STREQ(kelpPathGetBasename("dir/"), "");
    EXPECT_STREQ(kelpPathGetBasename("dir\\"), "");
    EXPECT_STREQ(kelpPathGetBasename("a/b\\"), "");
    EXPECT_STREQ(kelpPathGetBasename("/"), "");
}

TEST(Basename, PointsIntoTheSameText) {
    const char path[] = "a/b\\c";
    EXPECT_EQ(kelpPathGetBasename(path), path + 4);
    const char plain[] = "abc";
    EXPECT_EQ(kelpPathGetBasename(plain), plain);
    const char directory[] = "dir/";
    EXPECT_EQ(kelpPathGetBasename(directory), directory + 4);
}

// A copy into a field of `len` bytes that lies between two bytes of '#'.
std::string copied(const char* source, std::size_t len) {
    std::vector<char> memory(len + 2, '#');
    EXPECT_EQ(kelpStrCpy(memory.data() + 1, source, len), memory.data() + 1);
    EXPECT_EQ(memory.front(), '#');
    EXPECT_EQ(memory.back(), '#');
    return {memory.begin() + 1, memory.end() - 1};
}

TEST(TextToInt, ReadsTheNumberThatATextBeginsWith) {
    EXPECT_EQ(kelpTextToInt("12"), 12);
    EXPECT_EQ(kelpTextToInt(" -3 inches"), -3);
    EXPECT_EQ(kelpTextToInt("+007.9"), 7);
    EXPECT_EQ(kelpTextToInt("dark"), 0);
    EXPECT_EQ(kelpTextToInt(""), 0);
    EXPECT_EQ(kelpTextToInt("2147483647"), 2147483647);
    EXPECT_EQ(kelpTextToInt("-2147483648"), -2147483647 - 1);
}

TEST(TextToInt, KeepsTheLowBitsOfALargerNumberWhateverALongHolds) {
    EXPECT_EQ(kelpTextToInt("4294967296"), 0);            // 2^32
    EXPECT_EQ(kelpTextToInt("4294967311"), 15);           // 2^32 + 15
    EXPECT_EQ(kelpTextToInt("-4294967297"), -1);          // -2^32 - 1
    EXPECT_EQ(kelpTextToInt("99999999999"), 1215752191);  // 23 * 2^32 + 1215752191
    EXPECT_EQ(kelpTextToInt("9223372036854775808"), -1);  // the largest is 2^63 - 1: all ones
    EXPECT_EQ(kelpTextToInt("-9223372036854775809"), 0);  // the smallest is -2^63: low bits 0
}

TEST(BoundedCopy, AShortTextIsCopiedAndTheRestZeroed) {
    EXPECT_EQ(copied("abc", 8), std::string("abc\0\0\0\0\0", 8));
    EXPECT_EQ(copied("", 4), std::string(4, '\0'));
}

TEST(BoundedCopy, ATextThatJustFitsIsKeptWhole) {
    EXPECT_EQ(copied("abc", 4), std::string("abc\0", 4));
}

TEST(BoundedCopy, ATextAsLongAsTheFieldLosesItsLastCharacter) {
    EXPECT_EQ(copied("abcd", 4), std::string("abc\0", 4));
    EXPECT_EQ(copied("abcde", 4), std::string("abc\0", 4));
}

TEST(BoundedCopy, AFieldOf41KeepsFortyCharacters) {
    const std::string source = "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHI";
    ASSERT_EQ(source.size(), 45U);
    EXPECT_EQ(copied(source.c_str(), 41), source.substr(0, 40) + '\0');
}

TEST(BoundedCopy, AFieldOfOneHoldsOnlyItsEnd) {
    EXPECT_EQ(copied("abc", 1), std::string(1, '\0'));
    EXPECT_EQ(copied("", 1), std::string(1, '\0'));
}

TEST(BoundedCopy, NoMoreOfTheSourceIsReadThanMayBeCopied) {
    // Not ended by a zero within the field's length; a sanitizer sees a read past its end.
    const std::vector<char> source(8, 'x');
    EXPECT_EQ(copied(source.data(), 8), std::string(7, 'x') + '\0');
}

}  // namespace
}  // namespace kelp_test
