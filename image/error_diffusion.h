#ifndef KELP_IMAGE_ERROR_DIFFUSION_H
#define KELP_IMAGE_ERROR_DIFFUSION_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "image/diffusion_kernels.h"

/// Grey values, 0 black to 255 white, of `height` rows of `width` bytes, `stride` bytes apart.
struct GreyPage {
    const std::uint8_t* first;
    std::size_t stride;
    std::size_t width;
    std::size_t height;
};

/// Where the dots of a page go: of each row (width + 7) / 8 bytes are written, the dots most
/// significant first, 1 for white, unused low bits 0; `stride` bytes from row to row.
struct MonoPage {
    std::uint8_t* first;
    std::size_t stride;
};

/// Halftones a page. Only the bytes of its rows and those between them are read.
void diffuseErrors(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots);

/// The same in plain C++, as diffuseErrors() does where there are no vectors.
void diffuseErrorsPlainly(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots);

/// Error diffusion of one image row by row, for any depth. Grey values above 128 come out white. A
/// row may receive error from up to kRowsAhead rows before it, so the caller feeds that many rows
/// ahead of the output.
class ErrorDiffusion {
  public:
    /// How far down the tallest kernel reaches.
    static constexpr std::size_t kRowsAhead = diffusion::kRowsBelow;

    /// @param width pixels per row
    /// @param storedBits the bits that the image's depth can hold of a corrected grey value; 0xFF
    ///   for 8 bits per pixel
    ErrorDiffusion(ErrorKernel kernel, std::size_t width, std::uint8_t storedBits);

    /// Where the next row to be fed goes: `width` grey values, to be filled completely. Call it
    /// once a row, kRowsAhead rows ahead of halftoneRow; rows below the image need not be filled.
    std::uint8_t* nextInputRow();

    /// Halftones the oldest row that has been fed.
    /// @param packed width bits, most significant first, 1 for white; (width + 7) / 8 bytes are
    ///   written, unused low bits 0
    void halftoneRow(std::uint8_t* packed);

  private:
    /// That many cells either side of a row take the error that falls past an edge, and nobody
    /// reads them.
    static constexpr std::size_t kMargin = diffusion::kReach;
    static constexpr std::size_t kRows = kRowsAhead + 1;
    /// No kernel gives a neighbour more than half of the error.
    static constexpr int kLargestShare = diffusion::kBlackError / 2;

    std::uint8_t* rowBuffer(std::size_t index);

    ErrorKernel kernel_;
    std::size_t width_;
    /// What is stored of a grey value plus a share, from -kLargestShare on.
    std::array<std::uint8_t, 256 + 2 * kLargestShare> corrected_{};
    std::vector<std::uint8_t> cells_;
    std::size_t fed_ = 0;
    std::size_t done_ = 0;
};

#endif
