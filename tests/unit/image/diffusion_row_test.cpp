#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "image/error_diffusion.h"

namespace {

using RowList = std::vector<std::vector<std::uint8_t>>;

/// Feeds the rows ahead of the output, as a caller must, and returns the packed rows.
std::vector<std::vector<int>> halftoned(ErrorKernel kernel, const RowList& rows,
                                        std::uint8_t storedBits = 0xFF) {
    const std::size_t width = rows.at(0).size();
    ErrorDiffusion diffusion(kernel, width, storedBits);
    std::size_t fed = 0;
    std::vector<std::vector<int>> out;
    for (std::size_t y = 0; y < rows.size(); ++y) {
        while (fed <= y + ErrorDiffusion::kRowsAhead) {
            std::uint8_t* input = diffusion.nextInputRow();
            if (fed < rows.size()) {
                std::copy(rows[fed].begin(), rows[fed].end(), input);
            }
            ++fed;
        }
        std::vector<std::uint8_t> packed((width + 7) / 8 + 1, 0xEE);
        diffusion.halftoneRow(packed.data());
        EXPECT_EQ(packed.back(), 0xEE);
        out.emplace_back(packed.begin(), packed.end() - 1);
    }
    return out;
}

TEST(ErrorDiffusionRows, PackMostSignificantFirstAndClearTheUnusedBits) {
    EXPECT_EQ(halftoned(ErrorKernel::FloydSteinberg, {{255, 0, 255, 0, 0, 0, 0, 255, 255, 0, 255}}),
              (std::vector<std::vector<int>>{{0xA1, 0xA0}}));
    EXPECT_EQ(halftoned(ErrorKernel::Sierra, {std::vector<std::uint8_t>(16, 255)}),
              (std::vector<std::vector<int>>{{0xFF, 0xFF}}));
    EXPECT_EQ(halftoned(ErrorKernel::Stucki, {{255}}), (std::vector<std::vector<int>>{{0x80}}));
}

TEST(ErrorDiffusionRows, CarryTheErrorOfOneRowToTheThirdBelow) {
    // 128 * 5/200 = 3 goes from (3, 0) to (0, 3) and (6, 3).
    RowList rows(5, std::vector<std::uint8_t>(7, 255));
    rows[0][3] = 128;
    rows[3] = {126, 255, 255, 255, 255, 255, 125};
    EXPECT_EQ(halftoned(ErrorKernel::StevensonArce, rows),
              (std::vector<std::vector<int>>{{0xEE}, {0xFE}, {0xFE}, {0xFC}, {0xFE}}));
}

TEST(ErrorDiffusionRows, KeepOnlyTheStoredBitsOfACorrectedValue) {
    // 128 + 128 * 7/16 is 184 or 0xB8, which is white; its low four bits are 8.
    EXPECT_EQ(halftoned(ErrorKernel::FloydSteinberg, {{128, 128}}, 0xFF),
              (std::vector<std::vector<int>>{{0x40}}));
    EXPECT_EQ(halftoned(ErrorKernel::FloydSteinberg, {{128, 128}}, 0x0F),
              (std::vector<std::vector<int>>{{0x00}}));
}

}  // namespace
