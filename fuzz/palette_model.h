#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "image/dib.h"

namespace kelp_fuzz {

// What CxImage promises, one pixel at a time and without its block of memory.
struct PaletteModel {
    bool valid = false;
    // These outlive the pixels.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t depth = 0;
    std::uint32_t colors = 0;
    // And these go with copy_info.
    struct Info {
        std::uint32_t stride = 0;
        std::string error;
        bool has_nearest = false;
        tagRGBQUAD nearest_to;
        std::uint8_t nearest = 0;
    } info;

    std::vector<tagRGBQUAD> palette;
    std::vector<std::uint8_t> bytes;  // rows with their padding

    // The bytes of the block of such an image, whether or not it can be made.
    static std::uint64_t block_size(std::uint32_t w, std::uint32_t h, std::uint32_t bpp);

    bool create(std::uint32_t w, std::uint32_t h, std::uint32_t bpp);
    bool create_from(const std::vector<std::uint8_t>& rows, std::uint32_t w, std::uint32_t h,
                     std::uint32_t bpp, std::uint32_t row_stride, bool flip);
    void destroy();
    void take(PaletteModel& from);
    void copy_info(const PaletteModel& from);

    void set_palette(const std::vector<tagRGBQUAD>& entries);
    void set_color(std::uint8_t index, tagRGBQUAD color);
    tagRGBQUAD color(std::uint8_t index) const;
    void set_grey();
    std::uint8_t nearest_index(tagRGBQUAD color);

    bool inside(std::int64_t x, std::int64_t y) const;
    std::uint8_t index_at(std::int64_t x, std::int64_t y) const;  // inside
    void set_index(std::int64_t x, std::int64_t y, std::uint8_t index);
    std::uint8_t read(std::int64_t x, std::int64_t y) const;  // anywhere
    void write(std::int64_t x, std::int64_t y, std::uint8_t index);
    tagRGBQUAD color_at(std::int64_t x, std::int64_t y) const;
    void set_color_at(std::int64_t x, std::int64_t y, tagRGBQUAD color);

    bool rotate(PaletteModel& into) const;
    void mirror();
    void center(int new_width);
    bool expand(long left, long top, long right, long bottom, tagRGBQUAD canvas);
    void line(int x0, int x1, int y0, int y1, std::uint8_t index);
    bool lut(const std::array<std::uint8_t, 256>& table);
    void negative();
    bool increase(std::uint32_t bpp);
    // The halftone of an 8-bit image is the reference's, of any other the one given.
    bool dither(long method, const std::vector<std::uint8_t>& halftone);

  private:
    PaletteModel like(std::uint32_t w, std::uint32_t h, std::uint32_t bpp) const;
};

}  // namespace kelp_fuzz
