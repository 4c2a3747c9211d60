#include "tests/preview/sheet/picture_files.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
// The library's header needs FILE.
#include <jpeglib.h>

namespace kelp_test {
namespace {

void append(png_structp png, png_bytep data, png_size_t size) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char*>(data), size);
}

void nothing(png_structp) {}

std::vector<png_color> colours_of(const PngFile& png) {
    std::vector<png_color> colours;
    for (const std::uint32_t colour : png.palette) {
        colours.push_back({static_cast<png_byte>(colour >> 16), static_cast<png_byte>(colour >> 8),
                           static_cast<png_byte>(colour)});
    }
    return colours;
}

void describe_transparency(png_structp writer, png_infop info, const PngFile& png) {
    if (!png.palette_alpha.empty()) {
        png_set_tRNS(writer, info, reinterpret_cast<png_const_bytep>(png.palette_alpha.data()),
                     static_cast<int>(png.palette_alpha.size()), nullptr);
    }
    if (!png.transparent_colour.empty()) {
        png_color_16 colour{};
        colour.gray = colour.red = png.transparent_colour.front();
        if (png.transparent_colour.size() == 3) {
            colour.green = png.transparent_colour[1];
            colour.blue = png.transparent_colour[2];
        }
        png_set_tRNS(writer, info, nullptr, 0, &colour);
    }
}

}  // namespace

std::string png_file(const PngFile& png) {
    std::string file;
    png_structp writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(writer);
    std::vector<png_color> colours = colours_of(png);
    std::string rows = png.rows;
    std::vector<png_bytep> row_pointers;
    if (setjmp(png_jmpbuf(writer)) != 0) {
        std::abort();  // a test with a picture that is none
    }
    png_set_write_fn(writer, &file, append, nothing);
    png_set_IHDR(writer, info, png.width, png.height, png.depth, png.colour_type,
                 png.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!colours.empty()) {
        png_set_PLTE(writer, info, colours.data(), static_cast<int>(colours.size()));
    }
    describe_transparency(writer, info, png);
    if (png.pixels_per_metre != 0) {
        png_set_pHYs(writer, info, png.pixels_per_metre, png.pixels_per_metre,
                     PNG_RESOLUTION_METER);
    }
    for (unsigned y = 0; y < png.height; ++y) {
        row_pointers.push_back(
            reinterpret_cast<png_bytep>(rows.data() + rows.size() / png.height * y));
    }
    png_set_rows(writer, info, row_pointers.data());
    png_write_png(writer, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&writer, &info);
    return file;
}

std::string jpeg_file(const JpegFile& jpeg) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = jpeg.width;
    info.image_height = jpeg.height;
    info.input_components = jpeg.channels;
    info.in_color_space = jpeg.channels == 1   ? JCS_GRAYSCALE
                          : jpeg.channels == 3 ? JCS_RGB
                                               : JCS_CMYK;
    jpeg_set_defaults(&info);
    if (jpeg.luma_of_inks) {
        jpeg_set_colorspace(&info, JCS_YCCK);
    }
    jpeg_set_quality(&info, 100, TRUE);
    if (jpeg.progressive) {
        jpeg_simple_progression(&info);
    }
    info.write_Adobe_marker = jpeg.channels == 4 && jpeg.adobe_marker ? TRUE : FALSE;
    jpeg_start_compress(&info, TRUE);
    std::string rows = jpeg.rows;
    for (unsigned y = 0; y < jpeg.height; ++y) {
        auto* row = reinterpret_cast<unsigned char*>(rows.data() + rows.size() / jpeg.height * y);
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    std::string file(reinterpret_cast<char*>(bytes), size);
    jpeg_destroy_compress(&info);
    std::free(bytes);
    return file;
}

void put_number(std::string& file, std::size_t at, int size, std::uint32_t value) {
    for (int i = 0; i < size; ++i) {
        file.at(at + static_cast<std::size_t>(i)) =
            static_cast<char>(value >> (8 * (size - 1 - i)) & 0xFFU);
    }
}

std::string png_that_declares(std::uint32_t width, std::uint32_t height) {
    std::string file = png_file({1, 1, 1, PNG_COLOR_TYPE_GRAY, std::string(1, '\0')});
    put_number(file, 16, 4, width);  // behind the signature, IHDR's length and its name
    put_number(file, 20, 4, height);
    std::uint32_t sum = 0xFFFFFFFF;  // CRC-32 of IHDR's name and content
    for (std::size_t i = 12; i < 29; ++i) {
        sum ^= static_cast<unsigned char>(file[i]);
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1 ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    put_number(file, 29, 4, ~sum);
    return file;
}

std::vector<int> levels(Reader reader, const std::string& file) {
    try {
        const GreyPicture picture = reader(file, 1 << 20);
        EXPECT_EQ(picture.pixels.size(), std::size_t{picture.width} * picture.height);
        return {picture.pixels.begin(), picture.pixels.end()};
    } catch (const PictureError& error) {
        ADD_FAILURE() << error.what();
        return {};
    }
}

std::string refusal_by(Reader reader, const std::string& file, std::uint64_t max_pixels) {
    try {
        reader(file, max_pixels);
        return "taken";
    } catch (const PictureError& error) {
        return error.what();
    }
}

}  // namespace kelp_test
