#ifndef KELP_IMAGE_CX_IMAGE_H
#define KELP_IMAGE_CX_IMAGE_H

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "image/dib.h"

/// A palette image of 1, 4, 8 or 24 bits per pixel, held as a device-independent bitmap in one
/// owned block: the information header, the palette, then the pixel rows.
///
/// Row 0 is the first row in memory; no operation flips rows unless it is asked to. Every row is
/// GetEffWidth() bytes, a multiple of 4. A grey page is 8 bits per pixel with index = grey level
/// (0 black, 255 white); after Dither it is 1 bit per pixel, index 0 black and 1 white.
///
/// Packing within a row: 8 bits, byte x; 4 bits, byte x/2 with even x in the high nibble; 1 bit,
/// byte x/8 with the most significant bit first; 24 bits, blue, green, red at byte 3x, no palette.
///
/// Failures come back as false or null with a text in GetLastError(). Nothing throws, except that
/// Dither passes on std::bad_alloc from its few row buffers, the image unchanged. One image belongs
/// to one thread, GetNearestIndex included: it writes its cache.
class CxImage {
  public:
    CxImage() = default;
    ~CxImage() = default;
    CxImage(const CxImage&) = delete;
    CxImage& operator=(const CxImage&) = delete;

    // --- Creation and ownership (cx_image.cpp) ---

    /// Makes a new block; the old one is freed first, also when this fails.
    /// @param bpp normalised to a supported depth: 0-1 to 1, 2-4 to 4, 5-8 to 8, above to 24.
    /// @param imageType carried along, without meaning here.
    /// @return the block, owned by this image, palette and pixels zeroed; null with one of
    ///   "CxImage::Create : width and height must be greater than zero",
    ///   "CXIMAGE_MAX_MEMORY exceeded" (the size, or the bits of a padded row, do not fit 32 bits),
    ///   "CxImage::Create can't allocate memory".
    std::uint8_t* Create(std::uint32_t width, std::uint32_t height, std::uint32_t bpp,
                         std::uint32_t imageType);

    /// Makes an image from rows of packed pixels; depths under 24 get a grey palette.
    /// @param array height rows, `stride` bytes apart; stays the caller's.
    /// @param bpp 1, 4, 8, 24 or 32; 32 drops the fourth byte of each pixel, the others copy
    ///   min(GetEffWidth(), stride) bytes a row.
    /// @param flip the first row of the array becomes the last of the image.
    /// @return false, the image untouched, for a null array or another depth; false when Create
    ///   fails.
    bool CreateFromArray(const std::uint8_t* array, std::uint32_t width, std::uint32_t height,
                         std::uint32_t bpp, std::uint32_t stride, bool flip);

    /// Frees the block. Header and stride keep their last values. Always true.
    bool Destroy();

    /// Takes over the block, header and remaining state of `from`, which ends empty; the block of
    /// this image is freed. The flag is accepted and makes no difference. Always true.
    bool Transfer(CxImage& from, bool transferOwnership = true);

    /// Copies stride, image type, last error and nearest-colour cache of `src`, not its header
    /// and not its pixels; only into an image that has no block.
    void CopyInfo(const CxImage& src);

    /// Whether the image has a block.
    bool IsValid() const { return dib_ != nullptr; }
    const char* GetLastError() const { return info_.lastError; }

    std::uint32_t GetWidth() const { return static_cast<std::uint32_t>(header_.biWidth); }
    std::uint32_t GetHeight() const { return static_cast<std::uint32_t>(header_.biHeight); }
    /// Bits per pixel: 1, 4, 8 or 24; 0 before the first Create.
    std::uint32_t GetBpp() const { return header_.biBitCount; }
    /// Bytes per row.
    std::uint32_t GetEffWidth() const { return info_.effWidth; }
    /// Palette length: 2, 16, 256, or 0 for 24 bits per pixel.
    std::uint32_t GetNumColors() const { return header_.biClrUsed; }
    /// Bytes of the whole block.
    std::uint32_t GetSize() const;
    /// First byte of a row; null without a block or for a row outside the image.
    std::uint8_t* GetBits(std::uint32_t row = 0) const;

    // --- Palette (palette.cpp) ---

    /// The palette inside the block; null without a block or a palette.
    tagRGBQUAD* GetPalette() const;
    /// Bytes of the palette.
    std::uint32_t GetPaletteSize() const { return header_.biClrUsed * 4; }
    /// Copies the first entries, as many as both sides have.
    void SetPalette(const tagRGBQUAD* palette, std::uint32_t ncolors);
    /// An entry; all zero where there is none.
    tagRGBQUAD GetPaletteColor(std::uint8_t idx) const;
    void SetPaletteColor(std::uint8_t idx, std::uint8_t r, std::uint8_t g, std::uint8_t b,
                         std::uint8_t alpha);
    /// Equal steps from black to white; reserved bytes stay as they are.
    void SetGrayPalette();
    /// Index of the entry nearest to c by squared distance, the lowest of equals; searches only
    /// the header's "colours important" where that is set. The last answer is cached and the cache
    /// outlives changes of the palette.
    std::uint8_t GetNearestIndex(tagRGBQUAD c);

    // --- Pixel access (pixels.cpp) ---

    /// Index at (x, y); 0 without a block or a palette. Outside the image it is the first byte of
    /// the pixel data, not 0: callers that look past an edge discard what they compute from it.
    std::uint8_t GetPixelIndex(std::int64_t x, std::int64_t y) const;
    /// Stores the low bits of i that the depth holds; ignored outside the image.
    void SetPixelIndex(std::int64_t x, std::int64_t y, std::uint8_t i);
    /// As above without any check: (x, y) must lie in a valid image. A depth without indices reads
    /// 0 and stores nothing.
    std::uint8_t BlindGetPixelIndex(std::int64_t x, std::int64_t y) const;
    void BlindSetPixelIndex(std::int64_t x, std::int64_t y, std::uint8_t i);
    /// Colour at (x, y), unchecked; the flag has no effect.
    tagRGBQUAD BlindGetPixelColor(std::int64_t x, std::int64_t y, bool getAlpha = false) const;
    /// Stores the colour, or the index of its nearest palette entry; the flag has no effect.
    void BlindSetPixelColor(std::int64_t x, std::int64_t y, tagRGBQUAD c, bool setAlpha = false);

    // --- Geometry (geometry.cpp, draw_line.cpp) ---

    /// Turns the image by 180 degrees into `destination`, or in place when that is null. The
    /// result has 8 bits per pixel, whatever the depth before. False for an empty image.
    bool Rotate180(CxImage* destination = nullptr);
    /// Reverses each row. For 8 bits per pixel; other depths are left as they are.
    void Mirror();
    /// Puts the image in the middle of a wider 8-bit one, index 0 left and right of it. Nothing
    /// happens when newWidth is not greater than the width.
    void MakeCenter(int newWidth);
    /// Adds margins, in pixels, of the canvas colour (its nearest palette entry). Rows count from
    /// row 0, the bitmap's bottom row: `bottom` rows come before the image, `top` rows after it.
    /// @return false for an empty image or a negative margin; false with Create's text when the
    ///   larger image cannot be made. The image is then unchanged.
    bool Expand(long left, long top, long right, long bottom, tagRGBQUAD canvascolor);
    /// Sets the pixels of a straight line, both ends included, to `index` (Bresenham, 1965);
    /// points outside the image are left out. Both x values come first, then both y values.
    void DrawLine(int startX, int endX, int startY, int endY, std::uint8_t index);

    // --- Tone (tone.cpp) ---

    /// Brightness (added) and contrast (percent, slope about grey 128), both 0 for no change.
    /// False for an empty image.
    bool Light(int brightness, int contrast);
    /// Replaces every index i by table[i], 256 entries. 24-bit images stay as they are. False for
    /// an empty image or a null table.
    bool Lut(const std::uint8_t* table);
    /// Inverts every byte of the pixel data, row padding included.
    void Negative();
    /// Converts to 4, 8 or 24 bits per pixel, every pixel keeping its colour.
    /// @return true when nothing is to be done; false for an empty image, another depth or a
    ///   smaller one; false with Create's text when there is no memory.
    bool IncreaseBpp(std::uint32_t nbit);

    // --- Halftoning (dither.cpp) ---

    /// Reduces the image to 1 bit per pixel in place; pixel values are taken as grey levels.
    /// @param method 0 threshold, 1 ordered 4 x 4, 2 Burkes, 3 Stucki, 4 Jarvis-Judice-Ninke,
    ///   5 Sierra, 6 Stevenson-Arce, 7 Bayer 4 x 4; any other value, negative too,
    ///   Floyd-Steinberg.
    /// @return true, unchanged, for an image of 1 bit per pixel; false for an empty image; false
    ///   with Create's text, unchanged, when there is no memory.
    bool Dither(long method);
    /// As Dither and then IncreaseBpp(8), with their results; an image of 8 bits per pixel keeps
    /// its block, so that no second one of that size is needed.
    bool DitherAt8Bits(long method);

  private:
    /// What CopyInfo and Transfer move as one.
    struct Info {
        std::uint32_t effWidth = 0;
        std::uint8_t* bits = nullptr;
        std::uint32_t imageType = 0;
        char lastError[256] = {};
        tagRGBQUAD nearestCacheColor;
        std::uint8_t nearestCacheIndex = 0;
        bool nearestCacheValid = false;
    };
    struct FreeBlock {
        void operator()(std::uint8_t* block) const { std::free(block); }
    };

    bool isInside(std::int64_t x, std::int64_t y) const;
    void setLastError(const char* text);
    /// An empty image of the given size with this one's info; false when Create fails.
    bool createLike(CxImage& local, std::uint32_t width, std::uint32_t height,
                    std::uint32_t bpp) const;
    /// Makes `mono` this image in 1 bit per pixel; false, with an error text here, without memory.
    bool ditherInto(CxImage& mono, long method);
    std::uint8_t* rowAt(std::int64_t y) const;

    BITMAPINFOHEADER header_;
    Info info_;
    std::unique_ptr<std::uint8_t, FreeBlock> dib_;
};

#endif
