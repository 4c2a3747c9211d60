#include "pictures/scaled_picture.h"

#include <algorithm>
#include <cstdint>
#include <memory>

#include "pictures/cairo_surface.h"

namespace {

// The library's coordinates end at 32,767 and its filter looks beyond the edge by up to half a
// side: what it cannot scale it leaves blank, without an error.
constexpr std::uint32_t kLongestSide = 20'000;

/// Grey is kept as opacity.
CairoSurface makeSurface(std::uint32_t width, std::uint32_t height) {
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, static_cast<int>(width),
                                                    static_cast<int>(height)));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        throw PictureError("not scaled: " + std::string(cairo_status_to_string(
                                                cairo_surface_status(surface.get()))));
    }
    return surface;
}

unsigned char* row(const CairoSurface& surface, std::uint32_t y) {
    return cairo_image_surface_get_data(surface.get()) +
           std::size_t{y} * static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
}

CairoSurface surfaceOf(const GreyPicture& picture) {
    CairoSurface surface = makeSurface(picture.width, picture.height);
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        std::copy_n(picture.pixels.data() + std::size_t{y} * picture.width, picture.width,
                    row(surface, y));
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

void paintScaled(const CairoSurface& source, const GreyPicture& picture, const CairoSurface& target,
                 const PictureSize& size) {
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context(cairo_create(target.get()),
                                                                     cairo_destroy);
    cairo_scale(context.get(), static_cast<double>(size.width) / picture.width,
                static_cast<double>(size.height) / picture.height);
    cairo_set_source_surface(context.get(), source.get(), 0, 0);
    cairo_pattern_t* pattern = cairo_get_source(context.get());
    cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);  // edges keep their grey
    cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
    cairo_paint(context.get());
    cairo_surface_flush(target.get());
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) {
        throw PictureError(std::string("not scaled: ") +
                           cairo_status_to_string(cairo_status(context.get())));
    }
}

}  // namespace

GreyPicture scaled(const GreyPicture& picture, const PictureSize& size) {
    if (picture.width == size.width && picture.height == size.height) {
        return picture;
    }
    if (std::max({picture.width, picture.height, size.width, size.height}) > kLongestSide) {
        throw PictureError("a side over 20000 pixels cannot be scaled");
    }
    const CairoSurface source = surfaceOf(picture);
    const CairoSurface target = makeSurface(size.width, size.height);
    paintScaled(source, picture, target, size);
    GreyPicture result{size.width, size.height, {}};
    result.pixels.reserve(std::size_t{size.width} * size.height);
    for (std::uint32_t y = 0; y < size.height; ++y) {
        const unsigned char* pixels = row(target, y);
        result.pixels.insert(result.pixels.end(), pixels, pixels + size.width);
    }
    return result;
}
