// Packing, row encoding and whole labels in every form that the machine has, and snapshots, held to
// the reference.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <memory>

#include "printer/bmp.h"
#include "printer/memory_stream.h"
#include "printer/mono_packing.h"
#include "printer/zpl_encoding.h"
#include "printer/zpl_printer.h"
#include "simd/forms.h"
#include "tests/property/random_images.h"
#include "tests/reference/encoding.h"
#include "tests/reference/snapshot.h"
#include "tests/support/form_names.h"

namespace {

using kelp_test::forRandomImages;
using kelp_test::Random;
using reference::GrayImage;

/// Rows of bytes as they come: long runs, solid rows, blank rows, noise.
std::vector<unsigned char> randomRow(int bytes, Random& random) {
    std::vector<unsigned char> row;
    const int kind = random.between(0, 4);
    while (static_cast<int>(row.size()) < bytes) {
        const int run = kind == 0 ? 1 : random.between(1, kind == 1 ? 4 : 300);
        const int values[] = {0x00, 0xFF, 0x0F, 0xF0, random.between(0, 255)};
        const auto value = static_cast<unsigned char>(kind == 4 ? (random.one_in(3) ? 0x00 : 0xFF)
                                                                : values[random.between(0, 4)]);
        row.insert(row.end(), static_cast<std::size_t>(run), value);
    }
    row.resize(static_cast<std::size_t>(bytes));
    return row;
}

class EncodingForms : public testing::TestWithParam<simd::Form> {
  protected:
    static std::string expected(const std::vector<unsigned char>& row) {
        int lastSet = 0;
        return reference::encodeRow(row, lastSet);
    }
    /// The row lies at the end of a block of its own, `offset` bytes behind its begin.
    static std::string encoded(const std::vector<unsigned char>& row, std::size_t offset = 0) {
        const std::unique_ptr<unsigned char[]> block(new unsigned char[offset + row.size()]);
        std::copy(row.begin(), row.end(), block.get() + offset);
        std::string text = "before";
        zplAppendRow(text, block.get() + offset, row.size());
        EXPECT_TRUE(text.starts_with("before"));
        return text.substr(6);
    }

    const simd::ForcedForm forced_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(EveryForm, EncodingForms, testing::ValuesIn(simd::forms()),
                         kelp_test::form_name);

TEST_P(EncodingForms, EncodeRowsOfEveryWidthAtEveryPlace) {
    Random random(31);
    for (int bytes = 1; bytes <= 300; ++bytes) {
        for (int round = 0; round < 20; ++round) {
            const std::vector<unsigned char> row = randomRow(bytes, random);
            const auto offset = static_cast<std::size_t>((bytes + round) % 33);
            ASSERT_EQ(encoded(row, offset), expected(row)) << bytes << " bytes";
        }
    }
}

// A row is looked at 32 bytes at a time.
TEST_P(EncodingForms, EncodeOneRunOfEveryLengthAtEveryPlace) {
    constexpr std::size_t kDigits = 2 * 70;
    const auto set = [](std::vector<unsigned char>& row, std::size_t digit, unsigned value) {
        unsigned char& byte = row[digit / 2];
        byte = static_cast<unsigned char>(digit % 2 == 0 ? (byte & 0x0F) | value << 4
                                                         : (byte & 0xF0) | value);
    };
    for (std::size_t first = 0; first < kDigits; ++first) {
        for (std::size_t end = first + 1; end <= kDigits; ++end) {
            std::vector<unsigned char> row(kDigits / 2, 0xA5);
            for (std::size_t digit = first; digit < end; ++digit) {
                set(row, digit, static_cast<unsigned>(end % 3 * 7));  // 0, 7 and 14
            }
            ASSERT_EQ(encoded(row), expected(row)) << first << " to " << end;
        }
    }
}

TEST_P(EncodingForms, EncodeRowsOfOneValueOfEveryWidth) {
    for (const int value : {0x00, 0xFF, 0x11, 0x10, 0x01}) {
        for (std::size_t bytes = 1; bytes <= 1300; ++bytes) {
            const std::vector<unsigned char> row(bytes, static_cast<unsigned char>(value));
            ASSERT_EQ(encoded(row), expected(row)) << value << ", " << bytes << " bytes";
        }
    }
}

TEST(RunEncoding, MatchesTheReference) {
    for (unsigned count = 1; count <= 2500; ++count) {
        std::string text;
        zplAppendRun(text, 'A', count);
        ASSERT_EQ(text, reference::encodeRun('A', count)) << count;
    }
}

TEST_P(EncodingForms, PackWithEverySkip) {
    forRandomImages(32, [](const GrayImage& grey, Random& random) {
        std::vector<unsigned char> dots = grey.px;
        for (unsigned char& dot : dots) {
            dot = dot > 127 ? dot : 0;
        }
        const auto skip = static_cast<unsigned long>(random.between(0, grey.width + 2));
        ZplPrinter printer;
        printer.setSkipRightPixels(skip);
        const std::vector<unsigned char> expected =
            reference::grayToMono(grey.width, grey.height, skip, dots);
        const int count = printer.GrayToMono(grey.width, grey.height, dots.data());
        ASSERT_EQ(static_cast<std::size_t>(count), expected.size());
        dots.resize(expected.size());
        ASSERT_EQ(dots, expected) << "skip " << skip;
    });
}

/// Whole labels: prints one and compares with the reference.
void expectLabel(const GrayImage& grey, Random& random) {
    std::vector<unsigned char> dots = grey.px;
    for (int y = 0; y < grey.height; ++y) {
        if (random.one_in(4)) {  // rows that the solid-row shortcut takes
            std::fill_n(dots.begin() + y * grey.width, grey.width, static_cast<unsigned char>(1));
        }
    }
    cups_page_header2_t header{};
    header.NumCopies = static_cast<unsigned>(random.between(0, 99));
    const auto skip = static_cast<unsigned long>(random.between(0, 3));
    int lastSet = 0;
    const std::string expected = reference::encodeLabel(
        grey.width, grey.height, skip, static_cast<int>(header.NumCopies), dots, lastSet);

    MemoryStream stream;
    ZplPrinter printer;
    printer.getOutputStreams() = {stream.stream()};
    printer.setPageHeader(&header).setSkipRightPixels(skip);
    sPrinter = &printer;
    LastSet = 0;
    printer.doPrintImage(dots.data(), static_cast<unsigned long>(grey.width),
                         static_cast<unsigned long>(grey.height),
                         static_cast<unsigned long>(grey.width));
    sPrinter = nullptr;
    ASSERT_EQ(stream.take(), expected);
    ASSERT_EQ(LastSet, lastSet);
}

TEST_P(EncodingForms, WriteLabels) {
    forRandomImages(33, expectLabel);
}

TEST_P(EncodingForms, WriteLabelsOfSeveralPieces) {
    Random random(35);
    GrayImage noise{2000, 700, {}};
    for (int i = 0; i < noise.width * noise.height; ++i) {
        noise.px.push_back(static_cast<unsigned char>(random.between(0, 1)));
    }
    expectLabel(noise, random);
}

TEST(Snapshots, MatchTheReference) {
    forRandomImages(34, [](const GrayImage& rows, Random& random) {
        // The page is narrower than its rows are long.
        const auto bytesPerLine = static_cast<unsigned long>(rows.width);
        const auto height = static_cast<unsigned long>(rows.height);
        const auto width = static_cast<unsigned long>(random.between(1, rows.width));
        std::vector<unsigned char> pixels = rows.px;
        for (unsigned char& pixel : pixels) {
            pixel = pixel > 127 ? 1 : 0;
        }
        for (const auto depth : {std::uint16_t{8}, std::uint16_t{1}}) {
            MemoryStream stream;
            writeBmp(stream.stream(), pixels.data(), bytesPerLine, height, width, depth);
            const std::vector<unsigned char> expected =
                reference::snapshotBytes(pixels.data(), bytesPerLine, height, width, depth);
            ASSERT_EQ(stream.take(), std::string(expected.begin(), expected.end()))
                << "depth " << depth << " width " << width;
        }
    });
}

}  // namespace
