#include "printer/anti_wrinkle.h"

#include <algorithm>
#include <cstring>

#include "filter/log.h"
#include "printer/kelp_printer.h"

namespace {

/// Named page sizes and the printable area within their border, in hundredths of a millimetre.
struct PageArea {
    const char* name;
    std::uint32_t width;
    std::uint32_t height;
};
constexpr PageArea kPageAreas[] = {
    {"A4", 20000, 27500},
    {"Letter", 21000, 25700},
    {"Tattoo_A5", 20000, 11800},
    {"Tattoo_A6", 10000, 11800},
};

/// Rounded to the nearest dot. The product comes first: 300 dots per inch give 12 dots a
/// millimetre, not 10.
std::uint32_t dotsOf(std::uint32_t resolution, std::uint32_t hundredths) {
    return (resolution * hundredths / 254 + 5) / 10;
}

bool isPageSize(const cups_page_header2_t& header, const char* name) {
    return std::strncmp(header.cupsPageSizeName, name, sizeof header.cupsPageSizeName) == 0;
}

// Sizes compare as signed numbers, as the image holds them.
bool isLess(std::uint32_t a, std::uint32_t b) {
    return static_cast<std::int32_t>(a) < static_cast<std::int32_t>(b);
}

std::uint32_t offsetIn(std::uint32_t image, std::uint32_t canvas) {
    return isLess(canvas, image) ? (image - canvas) / 2 : 0;
}

/// Half-open ranges of columns and rows.
struct Bar {
    const char* name;
    std::uint32_t x0, x1, y0, y1;
};

void drawBar(CxImage& img, const Bar& bar) {
    const auto x0 = static_cast<std::int32_t>(bar.x0);
    const auto x1 = static_cast<std::int32_t>(bar.x1);
    const auto y0 = static_cast<std::int32_t>(bar.y0);
    const auto y1 = static_cast<std::int32_t>(bar.y1);
    // What lies outside the image is not drawn anyway; the bounds keep a huge level from taking
    // for ever.
    const std::int32_t lastX = std::min(x1, static_cast<std::int32_t>(img.GetWidth()));
    const std::int32_t lastY = std::min(y1, static_cast<std::int32_t>(img.GetHeight()));
    for (std::int32_t y = std::max(y0, 0); y < lastY; ++y) {
        for (std::int32_t x = std::max(x0, 0); x < lastX; ++x) {
            img.SetPixelIndex(x, y, 255);
        }
    }
    // Where the counters of two nested loops would stand: columns are only counted within a row.
    const std::int32_t endX = y0 < y1 ? std::max(x0, x1) : x0;
    const std::int32_t endY = std::max(y0, y1);
    kelpLogCommon(0, "EnableAntiWrink: Drawing %s line. point(%d, %d, %d, %d)", bar.name, x0, y0,
                  endX, endY);
}

}  // namespace

AntiWrinkleCanvas antiWrinkleCanvas(std::int32_t resolution, std::uint32_t level,
                                    const cups_page_header2_t& header) {
    const auto dpi = static_cast<std::uint32_t>(resolution);
    AntiWrinkleCanvas canvas;
    canvas.lineH = dotsOf(dpi, 100);
    canvas.lineV = dotsOf(dpi, level * 100);
    for (const PageArea& area : kPageAreas) {
        if (isPageSize(header, area.name)) {
            canvas.pageSizeName = area.name;
            canvas.width = dotsOf(dpi, area.width) + 2 * canvas.lineV;
            canvas.height = dotsOf(dpi, area.height) + 2 * canvas.lineH;
            break;
        }
    }
    return canvas;
}

AntiWrinkleMargins antiWrinkleMargins(const AntiWrinkleCanvas& canvas, std::uint32_t width,
                                      std::uint32_t height) {
    return {.ex = isLess(width, canvas.width) ? (canvas.width - width) / 2 : 0,
            .ey = isLess(height, canvas.height) ? (canvas.height - height) / 2 : 0};
}

void KelpPrinter::EnableAntiWrink(CxImage& img) const {
    if (!img.IsValid() || pageHdr_ == nullptr) {
        kelpLogCommon(0, "EnableAntiWrink: Image or pageHdr_ is not valid, returning.");
        return;
    }
    const AntiWrinkleCanvas canvas = antiWrinkleCanvas(resolution_, antiWrinkle_, *pageHdr_);
    kelpLogCommon(0,
                  "EnableAntiWrink: AntiWrinkle level: %d, line_v: %d points, line_h: %d points.",
                  static_cast<int>(antiWrinkle_), static_cast<int>(canvas.lineV),
                  static_cast<int>(canvas.lineH));
    if (canvas.pageSizeName != nullptr) {
        kelpLogCommon(0, "EnableAntiWrink: Page size is %s, CanvasWidth: %d, CanvasHeight: %d",
                      canvas.pageSizeName, static_cast<int>(canvas.width),
                      static_cast<int>(canvas.height));
    }

    const AntiWrinkleMargins margins = antiWrinkleMargins(canvas, img.GetWidth(), img.GetHeight());
    if (isLess(img.GetWidth(), canvas.width)) {
        kelpLogCommon(0, "EnableAntiWrink: Image width is less than canvas width, exPoints: %d",
                      static_cast<int>(margins.ex));
    }
    if (isLess(img.GetHeight(), canvas.height)) {
        kelpLogCommon(0, "EnableAntiWrink: Image height is less than canvas height, eyPoints: %d",
                      static_cast<int>(margins.ey));
    }
    if (margins.ex != 0 || margins.ey != 0) {
        constexpr tagRGBQUAD white{.rgbBlue = 255, .rgbGreen = 255, .rgbRed = 255};
        if (!img.Expand(margins.ex, margins.ey, margins.ex, margins.ey, white)) {
            kelpLogCommon(0, "EnableAntiWrink: Failed to expand image, returning.");
            return;
        }
        kelpLogCommon(0, "EnableAntiWrink: Image expanded successfully.");
    }

    const std::uint32_t ox = offsetIn(img.GetWidth(), canvas.width);
    const std::uint32_t oy = offsetIn(img.GetHeight(), canvas.height);
    if (isLess(canvas.width, img.GetWidth())) {
        kelpLogCommon(0, "EnableAntiWrink: Image width is greater than canvas width, offset.x: %d",
                      static_cast<int>(ox));
    }
    if (isLess(canvas.height, img.GetHeight())) {
        kelpLogCommon(0,
                      "EnableAntiWrink: Image height is greater than canvas height, offset.y: %d",
                      static_cast<int>(oy));
    }

    const std::uint32_t right = ox + canvas.width;
    const std::uint32_t bottom = oy + canvas.height;
    // Top is the side of row 0.
    drawBar(img, {"left", ox, ox + canvas.lineV, oy, bottom});
    drawBar(img, {"top", ox, right, oy, oy + canvas.lineH});
    drawBar(img, {"right", right - canvas.lineV, right, oy, bottom});
    drawBar(img, {"bottom", ox, right, bottom - canvas.lineH, bottom});
}
