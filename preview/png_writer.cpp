#include "preview/png_writer.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <vector>

namespace kelp_preview {
namespace {

/// What the library's callbacks reach; none of them may throw.
struct Output {
    std::string png;
    std::string error;
};

void append(png_structp png, png_bytep data, png_size_t size) {
    bool failed = false;
    try {
        static_cast<Output*>(png_get_io_ptr(png))
            ->png.append(reinterpret_cast<const char*>(data), size);
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    if (failed) {
        png_error(png, "out of memory");
    }
}

void flush(png_structp /*png*/) {}

[[noreturn]] void onError(png_structp png, png_const_charp message) {
    try {
        static_cast<Output*>(png_get_error_ptr(png))->error = message;
    } catch (const std::bad_alloc&) {
        // without its words
    }
    png_longjmp(png, 1);
}

void onWarning(png_structp /*png*/, png_const_charp /*message*/) {}

/// Gives the bytes of a row, top to bottom, as the format has them; must not throw.
using RowSource = std::function<const unsigned char*(std::uint64_t y)>;

struct Format {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    int bitDepth = 1;
    std::vector<png_color> palette;  ///< none for grey
};

/// Holds no object with a destructor: errors jump out of it.
bool write(png_structp png, png_infop info, const Format& format, const RowSource& row) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    // Its own limit is a million pixels a side.
    constexpr auto longest = static_cast<png_uint_32>(std::numeric_limits<png_int_32>::max());
    png_set_user_limits(png, longest, longest);
    const bool grey = format.palette.empty();
    png_set_IHDR(png, info, static_cast<png_uint_32>(format.width),
                 static_cast<png_uint_32>(format.height), format.bitDepth,
                 grey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!grey) {
        png_set_PLTE(png, info, format.palette.data(), static_cast<int>(format.palette.size()));
    }
    png_set_pHYs(png, info, kDotsPerMetre, kDotsPerMetre, PNG_RESOLUTION_METER);
    png_write_info(png, info);
    if (grey) {
        png_set_invert_mono(png);  // a set bit is white in PNG
    } else {
        png_set_packing(png);  // rows come a byte a pixel
    }
    for (std::uint64_t y = 0; y < format.height; ++y) {
        png_write_row(png, row(y));
    }
    png_write_end(png, info);
    return true;
}

std::string pngOf(const Format& format, const RowSource& row) {
    if (format.width > PNG_UINT_31_MAX || format.height > PNG_UINT_31_MAX) {
        throw std::runtime_error("too large for a PNG");
    }
    Output output;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &output, onError, onWarning);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        throw std::bad_alloc();
    }
    png_set_write_fn(png, &output, append, flush);
    const bool written = write(png, info, format, row);
    png_destroy_write_struct(&png, &info);
    if (!written) {
        throw std::runtime_error("no PNG made: " + output.error);
    }
    return std::move(output.png);
}

}  // namespace

std::string pngOf(const Bitmap& bitmap) {
    return pngOf({bitmap.width, bitmap.height, 1, {}},
                 [&](std::uint64_t y) { return bitmap.row(y); });
}

std::string differencePng(const Bitmap& before, const Bitmap& after) {
    // Told apart also by people who see few colours.
    const std::vector<png_color> palette{
        {255, 255, 255}, {213, 94, 0}, {0, 114, 178}, {128, 128, 128}};
    const Format format{std::max(before.width, after.width), std::max(before.height, after.height),
                        2, palette};
    std::vector<unsigned char> pixels(static_cast<std::size_t>(format.width));
    const auto has = [](const Bitmap& bitmap, std::uint64_t x, std::uint64_t y) {
        return x < bitmap.width && y < bitmap.height && bitmap.dot(x, y);
    };
    return pngOf(format, [&](std::uint64_t y) {
        for (std::uint64_t x = 0; x < format.width; ++x) {
            pixels[x] = static_cast<unsigned char>((has(before, x, y) ? 1 : 0) +
                                                   (has(after, x, y) ? 2 : 0));
        }
        return pixels.data();
    });
}

}  // namespace kelp_preview
