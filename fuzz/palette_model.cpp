#include "fuzz/palette_model.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#include "fuzz/memory_limit.h"
#include "tests/reference/dither.h"

namespace kelp_fuzz {
namespace {

std::uint32_t supported(std::uint32_t bpp) {
    return bpp <= 1 ? 1 : bpp <= 4 ? 4 : bpp <= 8 ? 8 : 24;
}

std::uint32_t colors_of(std::uint32_t depth) {
    return depth == 1 ? 2 : depth == 4 ? 16 : depth == 8 ? 256 : 0;
}

std::uint64_t row_bytes(std::uint32_t w, std::uint32_t depth) {
    return (std::uint64_t{w} * depth + 31) / 32 * 4;
}

bool is_over_the_limit(std::uint32_t w, std::uint32_t h, std::uint32_t depth) {
    const std::uint32_t wrapped_area = w * h;
    return std::uint64_t{wrapped_area} * depth >> 32U != 0 ||
           (std::uint64_t{w} * depth + 31) >> 32U != 0 ||
           PaletteModel::block_size(w, h, depth) >> 32U != 0;
}

}  // namespace

std::uint64_t PaletteModel::block_size(std::uint32_t w, std::uint32_t h, std::uint32_t bpp) {
    const std::uint32_t depth = supported(bpp);
    return 40 + std::uint64_t{colors_of(depth)} * 4 + row_bytes(w, depth) * h;
}

bool PaletteModel::create(std::uint32_t w, std::uint32_t h, std::uint32_t bpp) {
    destroy();
    if (w == 0 || h == 0) {
        info.error = "CxImage::Create : width and height must be greater than zero";
        return false;
    }
    if (is_over_the_limit(w, h, supported(bpp))) {
        info.error = "CXIMAGE_MAX_MEMORY exceeded";
        return false;
    }
    width = w;
    height = h;
    depth = supported(bpp);
    colors = colors_of(depth);
    info.stride = static_cast<std::uint32_t>(row_bytes(w, depth));
    if (block_size(w, h, depth) > most_memory) {
        info.error = "CxImage::Create can't allocate memory";
        return false;
    }
    valid = true;
    palette.assign(colors, {});
    bytes.assign(std::size_t{info.stride} * height, 0);
    return true;
}

bool PaletteModel::create_from(const std::vector<std::uint8_t>& rows, std::uint32_t w,
                               std::uint32_t h, std::uint32_t bpp, std::uint32_t row_stride,
                               bool flip) {
    if (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 24 && bpp != 32) {
        return false;
    }
    if (!create(w, h, bpp)) {
        return false;
    }
    set_grey();
    for (std::size_t y = 0; y < h; ++y) {
        const std::size_t to = (flip ? h - 1 - y : y) * info.stride;
        if (bpp == 32) {
            for (std::size_t i = 0; i < 3 * std::size_t{w}; ++i) {
                bytes[to + i] = rows[y * row_stride + i / 3 * 4 + i % 3];
            }
            continue;
        }
        for (std::size_t i = 0; i < info.stride && i < row_stride; ++i) {
            bytes[to + i] = rows[y * row_stride + i];
        }
    }
    return true;
}

void PaletteModel::destroy() {
    valid = false;
    palette.clear();
    bytes.clear();
}

void PaletteModel::take(PaletteModel& from) {
    *this = std::move(from);
    from = PaletteModel();
}

void PaletteModel::copy_info(const PaletteModel& from) {
    if (!valid) {
        info = from.info;
    }
}

void PaletteModel::set_palette(const std::vector<tagRGBQUAD>& entries) {
    for (std::size_t i = 0; i < palette.size() && i < entries.size(); ++i) {
        palette[i] = entries[i];
    }
}

void PaletteModel::set_color(std::uint8_t index, tagRGBQUAD color) {
    if (index < palette.size()) {
        palette[index] = color;
    }
}

tagRGBQUAD PaletteModel::color(std::uint8_t index) const {
    return index < palette.size() ? palette[index] : tagRGBQUAD{};
}

void PaletteModel::set_grey() {
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const auto grey = static_cast<std::uint8_t>(i * 255 / (palette.size() - 1));
        palette[i] = {grey, grey, grey, palette[i].rgbReserved};
    }
}

std::uint8_t PaletteModel::nearest_index(tagRGBQUAD to) {
    if (palette.empty()) {
        return 0;
    }
    if (info.has_nearest && info.nearest_to == to) {
        return info.nearest;
    }
    const auto distance = [&](const tagRGBQUAD& entry) {
        const int blue = entry.rgbBlue - to.rgbBlue;
        const int green = entry.rgbGreen - to.rgbGreen;
        const int red = entry.rgbRed - to.rgbRed;
        return blue * blue + green * green + red * red;
    };
    const auto best = std::min_element(
        palette.begin(), palette.end(),
        [&](const auto& one, const auto& other) { return distance(one) < distance(other); });
    info.has_nearest = true;
    info.nearest_to = to;
    info.nearest = static_cast<std::uint8_t>(best - palette.begin());
    return info.nearest;
}

bool PaletteModel::inside(std::int64_t x, std::int64_t y) const {
    return x >= 0 && y >= 0 && x < width && y < height;
}

std::uint8_t PaletteModel::index_at(std::int64_t x, std::int64_t y) const {
    if (depth == 24) {
        return 0;
    }
    std::uint8_t index = 0;
    for (std::uint32_t bit = 0; bit < depth; ++bit) {
        const std::uint64_t place = static_cast<std::uint64_t>(x) * depth + bit;
        const std::uint8_t byte = bytes[static_cast<std::uint64_t>(y) * info.stride + place / 8];
        index = static_cast<std::uint8_t>(index << 1 | (byte >> (7 - place % 8) & 1));
    }
    return index;
}

void PaletteModel::set_index(std::int64_t x, std::int64_t y, std::uint8_t index) {
    if (depth == 24) {
        return;
    }
    for (std::uint32_t bit = 0; bit < depth; ++bit) {
        const std::uint64_t place = static_cast<std::uint64_t>(x) * depth + bit;
        std::uint8_t& byte = bytes[static_cast<std::uint64_t>(y) * info.stride + place / 8];
        const auto mask = static_cast<std::uint8_t>(0x80U >> (place % 8));
        const bool set = (index >> (depth - 1 - bit) & 1) != 0;
        byte = static_cast<std::uint8_t>(set ? byte | mask : byte & ~mask);
    }
}

std::uint8_t PaletteModel::read(std::int64_t x, std::int64_t y) const {
    if (palette.empty()) {
        return 0;
    }
    return inside(x, y) ? index_at(x, y) : bytes[0];
}

void PaletteModel::write(std::int64_t x, std::int64_t y, std::uint8_t index) {
    if (!palette.empty() && inside(x, y)) {
        set_index(x, y, index);
    }
}

tagRGBQUAD PaletteModel::color_at(std::int64_t x, std::int64_t y) const {
    if (depth != 24) {
        return color(index_at(x, y));
    }
    const auto place = static_cast<std::size_t>(y * info.stride + 3 * x);
    return {bytes[place], bytes[place + 1], bytes[place + 2], 0};
}

void PaletteModel::set_color_at(std::int64_t x, std::int64_t y, tagRGBQUAD color) {
    if (depth != 24) {
        set_index(x, y, nearest_index(color));
        return;
    }
    const auto place = static_cast<std::size_t>(y * info.stride + 3 * x);
    bytes[place] = color.rgbBlue;
    bytes[place + 1] = color.rgbGreen;
    bytes[place + 2] = color.rgbRed;
}

PaletteModel PaletteModel::like(std::uint32_t w, std::uint32_t h, std::uint32_t bpp) const {
    PaletteModel made;
    made.copy_info(*this);
    made.create(w, h, bpp);
    made.set_palette(palette);
    return made;
}

bool PaletteModel::rotate(PaletteModel& into) const {
    if (!valid) {
        return false;
    }
    PaletteModel turned = like(width, height, 8);
    for (std::int64_t y = 0; turned.valid && y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            turned.set_index(width - 1 - x, height - 1 - y, index_at(x, y));
        }
    }
    into.take(turned);
    return true;
}

void PaletteModel::mirror() {
    if (!valid || depth != 8) {
        return;
    }
    PaletteModel mirrored = like(width, height, 8);
    for (std::int64_t y = 0; mirrored.valid && y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            mirrored.set_index(width - 1 - x, y, index_at(x, y));
        }
    }
    take(mirrored);
}

void PaletteModel::center(int new_width) {
    if (!valid || new_width <= static_cast<std::int64_t>(width)) {
        return;
    }
    PaletteModel wider = like(static_cast<std::uint32_t>(new_width), height, 8);
    for (std::int64_t y = 0; wider.valid && y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            wider.set_index(x + (new_width - static_cast<std::int64_t>(width)) / 2, y,
                            index_at(x, y));
        }
    }
    take(wider);
}

bool PaletteModel::expand(long left, long top, long right, long bottom, tagRGBQUAD canvas) {
    if (!valid || left < 0 || top < 0 || right < 0 || bottom < 0) {
        return false;
    }
    constexpr long limit = 0xFFFFFFFF;
    if (left > limit || right > limit || left + right + width > limit ||  //
        top > limit || bottom > limit || top + bottom + height > limit) {
        info.error = "CXIMAGE_MAX_MEMORY exceeded";
        return false;
    }
    PaletteModel larger = like(static_cast<std::uint32_t>(left + right + width),
                               static_cast<std::uint32_t>(top + bottom + height), depth);
    if (!larger.valid) {
        info.error = larger.info.error;
        return false;
    }
    if (depth == 8) {
        std::fill(larger.bytes.begin(), larger.bytes.end(), larger.nearest_index(canvas));
    }
    for (std::int64_t y = 0; y < larger.height; ++y) {
        for (std::int64_t x = 0; x < larger.width; ++x) {
            const std::int64_t from_x = x - left;
            const std::int64_t from_y = y - bottom;
            if (!inside(from_x, from_y)) {
                larger.set_color_at(x, y, canvas);
            } else if (depth == 24) {
                larger.set_color_at(x, y, color_at(from_x, from_y));
            } else {
                larger.set_index(x, y, index_at(from_x, from_y));
            }
        }
    }
    if (depth != 24) {
        larger.nearest_index(canvas);
    }
    take(larger);
    return true;
}

void PaletteModel::line(int x0, int x1, int y0, int y1, std::uint8_t index) {
    const int dx = std::abs(x1 - x0);
    const int dy = std::abs(y1 - y0);
    const int sx = x1 < x0 ? -1 : 1;
    const int sy = y1 < y0 ? -1 : 1;
    const int count = std::max(dx, dy);
    int sum = count / 2;
    int x = x0;
    int y = y0;
    for (int step = 0; step <= count && valid; ++step) {
        write(x, y, index);
        sum += std::min(dx, dy);
        const bool over = sum >= count;
        sum -= over ? count : 0;
        x += dx >= dy || over ? sx : 0;
        y += dx < dy || over ? sy : 0;
    }
}

bool PaletteModel::lut(const std::array<std::uint8_t, 256>& table) {
    for (std::int64_t y = 0; valid && y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            set_index(x, y, table[index_at(x, y)]);
        }
    }
    return valid;
}

void PaletteModel::negative() {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(255 - byte);
    }
}

bool PaletteModel::increase(std::uint32_t bpp) {
    if (!valid || (bpp != 4 && bpp != 8 && bpp != 24) || depth > bpp) {
        return false;
    }
    if (depth == bpp) {
        return true;
    }
    PaletteModel deeper = like(width, height, bpp);
    if (!deeper.valid) {
        info.error = deeper.info.error;
        return false;
    }
    for (std::int64_t y = 0; y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            if (bpp == 24) {
                deeper.set_color_at(x, y, color_at(x, y));
            } else {
                deeper.set_index(x, y, index_at(x, y));
            }
        }
    }
    take(deeper);
    return true;
}

bool PaletteModel::dither(long method, const std::vector<std::uint8_t>& halftone) {
    if (!valid || depth == 1) {
        return valid;
    }
    PaletteModel mono = like(width, height, 1);
    if (!mono.valid) {
        info.error = mono.info.error;
        return false;
    }
    mono.palette = {{0, 0, 0, 0}, {255, 255, 255, 0}};
    if (depth == 8) {
        reference::GrayImage grey{static_cast<int>(width), static_cast<int>(height), {}};
        for (std::int64_t y = 0; y < height; ++y) {
            for (std::int64_t x = 0; x < width; ++x) {
                grey.px.push_back(index_at(x, y));
            }
        }
        const reference::GrayImage dots = reference::dither(grey, method);
        for (std::int64_t y = 0; y < height; ++y) {
            for (std::int64_t x = 0; x < width; ++x) {
                mono.set_index(x, y, dots.at(x, y));
            }
        }
    } else {
        mono.bytes = halftone;
    }
    take(mono);
    return true;
}

}  // namespace kelp_fuzz
