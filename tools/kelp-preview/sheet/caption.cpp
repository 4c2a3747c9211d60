#include "tools/kelp-preview/sheet/caption.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "pictures/cairo_surface.h"

namespace {

using kelp_preview::Bitmap;

constexpr double kLineSpacing = 1.25;  // of the font's size
constexpr unsigned char kHalfCovered = 128;

/// A surface of coverage and what draws on it.
class Canvas {
  public:
    Canvas(int width, int height)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height)),
          context_(cairo_create(surface_.get()), cairo_destroy) {}

    cairo_t* context() const { return context_.get(); }
    double textWidth(const std::string& text) const {
        cairo_text_extents_t extents;
        cairo_text_extents(context(), text.c_str(), &extents);
        return std::max(extents.x_advance, extents.x_bearing + extents.width);
    }
    void chooseFont(bool bold, double size) const {
        cairo_select_font_face(context(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(context(), size);
    }
    Bitmap dots() const {
        cairo_surface_flush(surface_.get());
        if (cairo_status(context()) != CAIRO_STATUS_SUCCESS) {
            throw std::runtime_error(std::string("captions cannot be drawn: ") +
                                     cairo_status_to_string(cairo_status(context())));
        }
        const unsigned char* pixels = cairo_image_surface_get_data(surface_.get());
        const int stride = cairo_image_surface_get_stride(surface_.get());
        const int width = cairo_image_surface_get_width(surface_.get());
        const int height = cairo_image_surface_get_height(surface_.get());
        Bitmap bitmap(static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (pixels[y * stride + x] >= kHalfCovered) {
                    bitmap.setDot(static_cast<std::uint64_t>(x), static_cast<std::uint64_t>(y));
                }
            }
        }
        return bitmap;
    }

  private:
    CairoSurface surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};

}  // namespace

Bitmap drawCaption(const std::vector<std::string>& lines, std::uint32_t size) {
    const Canvas measure(1, 1);
    double width = 1;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        measure.chooseFont(i == 0, size);
        width = std::max(width, measure.textWidth(lines[i]));
    }
    const double lineHeight = std::ceil(size * kLineSpacing);
    const Canvas canvas(static_cast<int>(std::ceil(width)) + 1,
                        static_cast<int>(lineHeight * static_cast<double>(lines.size())) + 1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        canvas.chooseFont(i == 0, size);
        // The font's own descent is about a quarter of its size.
        cairo_move_to(canvas.context(), 0,
                      lineHeight * static_cast<double>(i + 1) - std::round(size * 0.25));
        cairo_show_text(canvas.context(), lines[i].c_str());
    }
    return canvas.dots();
}
