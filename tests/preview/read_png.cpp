#include "tests/preview/read_png.h"

#include <png.h>

#include <memory>
#include <stdexcept>

#include "tests/support/files.h"

namespace kelp_test {
namespace {

struct Source {
    std::string bytes;
    std::size_t place = 0;
};

void read(png_structp png, png_bytep data, png_size_t size) {
    auto& source = *static_cast<Source*>(png_get_io_ptr(png));
    if (size > source.bytes.size() - source.place) {
        png_error(png, "cut short");
    }
    source.bytes.copy(reinterpret_cast<char*>(data), size, source.place);
    source.place += size;
}

char letter(unsigned char red, unsigned char blue) {
    if (red == blue) {
        return red == 0 ? '#' : red == 255 ? '.' : 'g';
    }
    return red > blue ? 'r' : 'b';
}

bool decode(png_structp png, png_infop info, Picture& picture, std::vector<unsigned char>& row) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    png_read_info(png, info);
    picture.bit_depth = png_get_bit_depth(png, info);
    picture.colour_type = png_get_color_type(png, info);
    picture.dots_per_metre_x = png_get_x_pixels_per_meter(png, info);
    picture.dots_per_metre_y = png_get_y_pixels_per_meter(png, info);
    png_set_expand(png);  // 8 bits of grey or of each colour
    png_read_update_info(png, info);
    const png_uint_32 width = png_get_image_width(png, info);
    const std::size_t channels = png_get_channels(png, info);
    row.resize(width * channels);
    picture.rows.assign(png_get_image_height(png, info), "");
    for (std::string& text : picture.rows) {
        png_read_row(png, row.data(), nullptr);
        for (std::size_t i = 0; i < row.size(); i += channels) {
            text += letter(row[i], row[i + channels - 1]);
        }
    }
    png_read_end(png, nullptr);
    return true;
}

}  // namespace

Picture read_png(const std::filesystem::path& path) {
    Source source{read_file(path)};
    Picture picture;
    std::vector<unsigned char> row;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &source, read);
    const bool whole = decode(png, info, picture, row);
    png_destroy_read_struct(&png, &info, nullptr);
    if (!whole || source.place != source.bytes.size()) {
        throw std::runtime_error(path.string() + " is no whole PNG");
    }
    return picture;
}

}  // namespace kelp_test
