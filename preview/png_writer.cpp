#include "preview/png_writer.h"

#include <png.h>

#include <csetjmp>
#include <limits>
#include <new>
#include <stdexcept>

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

/// Holds no object with a destructor: errors jump out of it.
bool write(png_structp png, png_infop info, const Bitmap& bitmap) {
    if (setjmp(png_jmpbuf(png)) != 0) {  // NOLINT: the library's way
        return false;
    }
    // Its own limit is a million pixels a side.
    constexpr auto longest = static_cast<png_uint_32>(std::numeric_limits<png_int_32>::max());
    png_set_user_limits(png, longest, longest);
    png_set_IHDR(png, info, static_cast<png_uint_32>(bitmap.width),
                 static_cast<png_uint_32>(bitmap.height), 1, PNG_COLOR_TYPE_GRAY,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, kDotsPerMetre, kDotsPerMetre, PNG_RESOLUTION_METER);
    png_write_info(png, info);
    png_set_invert_mono(png);  // a set bit is white in PNG
    for (std::uint64_t y = 0; y < bitmap.height; ++y) {
        png_write_row(png, bitmap.row(y));
    }
    png_write_end(png, info);
    return true;
}

}  // namespace

std::string pngOf(const Bitmap& bitmap) {
    if (bitmap.width > PNG_UINT_31_MAX || bitmap.height > PNG_UINT_31_MAX) {
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
    const bool written = write(png, info, bitmap);
    png_destroy_write_struct(&png, &info);
    if (!written) {
        throw std::runtime_error("no PNG made: " + output.error);
    }
    return std::move(output.png);
}

}  // namespace kelp_preview
