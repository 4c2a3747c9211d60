#include <cstdio>
// The library's header needs FILE.
#include <jpeglib.h>

#include <csetjmp>
#include <string>

#include "pictures/picture_formats.h"

namespace {

/// What the library's callbacks reach. Its base must come first.
struct Errors {
    jpeg_error_mgr base;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

[[noreturn]] void onError(j_common_ptr decoder) {
    auto* errors = reinterpret_cast<Errors*>(decoder->err);
    errors->base.format_message(decoder, errors->message);
    std::longjmp(errors->jump, 1);
}

/// The library only warns of data that is missing or damaged, and makes some up.
void onMessage(j_common_ptr decoder, int level) {
    if (level < 0) {
        onError(decoder);
    }
}

struct Decoder {
    Decoder() {
        info.err = jpeg_std_error(&errors.base);
        errors.base.error_exit = onError;
        errors.base.emit_message = onMessage;
        errors.message[0] = '\0';
    }
    ~Decoder() { jpeg_destroy_decompress(&info); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    jpeg_decompress_struct info{};
    Errors errors{};
};

// The functions below hold no object with a destructor: errors jump out of them.

bool readHeader(Decoder& decoder, std::string_view file) {
    if (setjmp(decoder.errors.jump) != 0) {
        return false;
    }
    jpeg_create_decompress(&decoder.info);
    jpeg_mem_src(&decoder.info, reinterpret_cast<const unsigned char*>(file.data()), file.size());
    jpeg_read_header(&decoder.info, TRUE);
    return true;
}

bool start(Decoder& decoder) {
    if (setjmp(decoder.errors.jump) != 0) {
        return false;
    }
    const J_COLOR_SPACE kind = decoder.info.jpeg_color_space;
    const bool inks = kind == JCS_CMYK || kind == JCS_YCCK;
    decoder.info.out_color_space = inks                    ? JCS_CMYK
                                   : kind == JCS_GRAYSCALE ? JCS_GRAYSCALE
                                                           : JCS_RGB;
    jpeg_start_decompress(&decoder.info);
    return true;
}

bool readRow(Decoder& decoder, unsigned char* row) {
    if (setjmp(decoder.errors.jump) != 0) {
        return false;
    }
    jpeg_read_scanlines(&decoder.info, &row, 1);
    return true;
}

std::uint32_t dotsPerInchOf(const jpeg_decompress_struct& info) {
    constexpr double kCentimetresPerInch = 2.54;
    if (info.saw_JFIF_marker == 0 || (info.density_unit != 1 && info.density_unit != 2)) {
        return 0;
    }
    const double dots = info.X_density * (info.density_unit == 1 ? 1.0 : kCentimetresPerInch);
    return static_cast<std::uint32_t>(dots + 0.5);
}

/// Four inks as programs write them: 255 is none.
unsigned char greyOfInks(const unsigned char* inks, bool inverted) {
    const auto light = [&](int i) -> unsigned { return inverted ? inks[i] : 255U - inks[i]; };
    const unsigned key = light(3);
    const auto seen = [&](int i) { return (light(i) * key + 127) / 255; };
    return luma(seen(0), seen(1), seen(2));
}

}  // namespace

GreyPicture pictureOfJpeg(std::string_view file, std::uint64_t maxPixels) {
    Decoder decoder;
    const auto fail = [&] {
        throw PictureError(std::string("a broken JPEG: ") + decoder.errors.message);
    };
    if (!readHeader(decoder, file)) {
        fail();
    }
    const jpeg_decompress_struct& info = decoder.info;
    checkPictureSize(info.image_width, info.image_height, maxPixels);
    if (!start(decoder)) {
        fail();
    }
    const bool inverted = info.saw_Adobe_marker != 0;
    const auto channels = static_cast<std::size_t>(info.output_components);
    std::vector<unsigned char> row(channels * info.output_width);
    GreyPicture picture{info.output_width, info.output_height, {}, dotsPerInchOf(info)};
    picture.pixels.reserve(std::size_t{picture.width} * picture.height);
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        if (!readRow(decoder, row.data())) {
            fail();
        }
        for (std::size_t i = 0; i < row.size(); i += channels) {
            const unsigned char* pixel = &row[i];
            picture.pixels.push_back(channels == 1   ? pixel[0]
                                     : channels == 3 ? luma(pixel[0], pixel[1], pixel[2])
                                                     : greyOfInks(pixel, inverted));
        }
    }
    return picture;
}
