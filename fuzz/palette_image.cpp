// CxImage as a sequence of any operations on two images.
//
// Checked: after each one both images are what a simple model says, every byte of their rows
// included, and so is what the operation returned.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/memory_limit.h"
#include "fuzz/palette_model.h"
#include "image/cx_image.h"
#include "tests/reference/strided.h"

namespace {

using kelp_fuzz::PaletteModel;
using kelp_fuzz::require;
using Bytes = std::vector<std::uint8_t>;

struct Pair {
    CxImage image;
    PaletteModel model;

    void compare() const {
        require(image.IsValid() == model.valid, "has an image or not");
        require(image.GetWidth() == model.width && image.GetHeight() == model.height, "size");
        require(image.GetBpp() == model.depth && image.GetNumColors() == model.colors, "depth");
        require(image.GetEffWidth() == model.info.stride, "bytes of a row");
        require(image.GetLastError() == model.info.error, "last error");
        require(image.GetBits(image.GetHeight()) == nullptr, "a row below the last");
        if (!model.valid) {
            require(image.GetBits() == nullptr && image.GetPalette() == nullptr, "a block");
            return;
        }
        require(image.GetSize() == PaletteModel::block_size(model.width, model.height, model.depth),
                "bytes of the block");
        require((image.GetPalette() != nullptr) == (model.colors != 0), "a palette");
        require(std::equal(model.palette.begin(), model.palette.end(), image.GetPalette()),
                "colours of the palette");
        require(std::equal(model.bytes.begin(), model.bytes.end(), image.GetBits()), "pixels");
    }
};

class Operations {
  public:
    Operations(const std::uint8_t* data, std::size_t size) : input_(data, size) {}

    void run() {
        for (int count = 0; count < 40 && input_.remaining_bytes() > 0; ++count) {
            const std::size_t which = input_.ConsumeBool() ? 1 : 0;
            one(pairs_[which], pairs_[1 - which]);
            pairs_[0].compare();
            pairs_[1].compare();
        }
    }

  private:
    // Of images that are made and looked at in no time, or that cannot be made.
    static bool is_quick(std::uint64_t w, std::uint64_t h, std::uint32_t bpp) {
        const std::uint64_t size = PaletteModel::block_size(static_cast<std::uint32_t>(w),
                                                            static_cast<std::uint32_t>(h), bpp);
        return size < 20000 || size > kelp_fuzz::most_memory + 100000;
    }

    std::uint32_t extent() {
        static constexpr std::uint32_t large[] = {0,          65535,      65536,      46341,
                                                  0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x0AAAAAAB,
                                                  0x1FFFFFFD, 0x10000000, 0x20000000, 0x8000000};
        return input_.ConsumeIntegralInRange(0, 15) == 0
                   ? large[input_.ConsumeIntegralInRange<std::size_t>(0, std::size(large) - 1)]
                   : input_.ConsumeIntegralInRange<std::uint32_t>(1, 40);
    }

    long margin() {
        static constexpr long large[] = {-1,        1L << 32U,  (1L << 32U) - 1, 0x7FFFFFFFFFFFFFFF,
                                         1L << 31U, 100'000'000};
        return input_.ConsumeIntegralInRange(0, 15) == 0
                   ? large[input_.ConsumeIntegralInRange<std::size_t>(0, std::size(large) - 1)]
                   : input_.ConsumeIntegralInRange(0, 9);
    }

    std::uint8_t byte() { return input_.ConsumeIntegral<std::uint8_t>(); }
    tagRGBQUAD color() {
        // Few, so that the same comes again.
        static constexpr std::uint8_t levels[] = {0, 255, 17, 128, 127, 16};
        const auto level = [&] {
            return levels[input_.ConsumeIntegralInRange<std::size_t>(0, std::size(levels) - 1)];
        };
        return {level(), level(), level(), level()};
    }
    // At the edges as often as elsewhere.
    int coordinate(std::uint32_t side) {
        const int anywhere = input_.ConsumeIntegralInRange(-60, 120);
        return anywhere % 2 == 0 || side > 100000 ? anywhere
                                                  : static_cast<int>(side) + anywhere % 4 / 2;
    }

    void create(Pair& pair) {
        const std::uint32_t w = extent();
        const std::uint32_t h = extent();
        const auto bpp = input_.ConsumeIntegralInRange<std::uint32_t>(0, 33);
        if (is_quick(w, h, bpp)) {
            require((pair.image.Create(w, h, bpp, 0) != nullptr) == pair.model.create(w, h, bpp),
                    "Create");
        }
    }

    void create_from_array(Pair& pair) {
        static constexpr std::uint32_t depths[] = {1, 4, 8, 8, 24, 32, 2, 16};
        const std::uint32_t bpp = depths[input_.ConsumeIntegralInRange<std::size_t>(0, 7)];
        const auto w = input_.ConsumeIntegralInRange<std::uint32_t>(0, 40);
        const auto h = input_.ConsumeIntegralInRange<std::uint32_t>(0, 12);
        const std::uint32_t least = bpp == 32 ? 4 * w : (w * bpp + 7) / 8;
        const std::uint32_t stride = least + input_.ConsumeIntegralInRange<std::uint32_t>(0, 6);
        Bytes rows = input_.ConsumeBytes<std::uint8_t>(std::size_t{stride} * h);
        rows.resize(std::size_t{stride} * h, 0x55);
        const bool flip = input_.ConsumeBool();
        // Its own block, so that a byte too many is seen.
        require(pair.image.CreateFromArray(rows.empty() ? &empty_ : rows.data(), w, h, bpp, stride,
                                           flip) ==
                    pair.model.create_from(rows, w, h, bpp, stride, flip),
                "CreateFromArray");
    }

    void palette(Pair& pair, Pair& other) {
        switch (input_.ConsumeIntegralInRange(0, 4)) {
            case 0:
                pair.image.SetPalette(other.image.GetPalette(), other.image.GetNumColors());
                pair.model.set_palette(other.model.palette);
                break;
            case 1: {
                const std::uint8_t index = byte();
                const tagRGBQUAD c = color();
                pair.image.SetPaletteColor(index, c.rgbRed, c.rgbGreen, c.rgbBlue, c.rgbReserved);
                pair.model.set_color(index, c);
                break;
            }
            case 2:
                pair.image.SetGrayPalette();
                pair.model.set_grey();
                break;
            case 3: {
                const std::uint8_t index = byte();
                require(pair.image.GetPaletteColor(index) == pair.model.color(index),
                        "GetPaletteColor");
                break;
            }
            default: {
                const tagRGBQUAD c = color();
                require(pair.image.GetNearestIndex(c) == pair.model.nearest_index(c),
                        "GetNearestIndex");
                break;
            }
        }
    }

    void pixel(Pair& pair) {
        const int x = coordinate(pair.model.width);
        const int y = coordinate(pair.model.height);
        const std::uint8_t index = byte();
        require(pair.image.GetPixelIndex(x, y) == pair.model.read(x, y), "GetPixelIndex");
        pair.image.SetPixelIndex(x, y, index);
        pair.model.write(x, y, index);
        if (!pair.model.valid || !pair.model.inside(x, y)) {
            return;
        }
        require(pair.image.BlindGetPixelColor(x, y) == pair.model.color_at(x, y),
                "BlindGetPixelColor");
        if (input_.ConsumeBool()) {
            const tagRGBQUAD c = color();
            pair.image.BlindSetPixelColor(x, y, c);
            pair.model.set_color_at(x, y, c);
        }
    }

    void expand(Pair& pair) {
        const long left = margin();
        const long top = margin();
        const long right = margin();
        const long bottom = margin();
        const tagRGBQUAD c = color();
        const bool fits = left < 1000 && top < 1000 && right < 1000 && bottom < 1000;
        const long w = static_cast<long>(pair.model.width) + (fits ? left + right : 0);
        const long h = static_cast<long>(pair.model.height) + (fits ? top + bottom : 0);
        const bool is_small = fits && is_quick(static_cast<std::uint64_t>(w),
                                               static_cast<std::uint64_t>(h), pair.model.depth);
        // A margin of a hundred million and more is over every limit of the least image.
        if (is_small || !fits) {
            require(pair.image.Expand(left, top, right, bottom, c) ==
                        pair.model.expand(left, top, right, bottom, c),
                    "Expand");
        }
    }

    void center(Pair& pair) {
        const int wider = input_.ConsumeIntegralInRange(0, 15) == 0
                              ? input_.ConsumeIntegral<int>()
                              : input_.ConsumeIntegralInRange(-1, 100);
        if (is_quick(static_cast<std::uint64_t>(std::max(wider, 0)), pair.model.height, 8)) {
            pair.image.MakeCenter(wider);
            pair.model.center(wider);
        }
    }

    void light(Pair& pair) {
        const int brightness = input_.ConsumeIntegralInRange(-600, 600);
        const int contrast = input_.ConsumeIntegralInRange(-300, 300);
        require(pair.image.Light(brightness, contrast) ==
                    pair.model.lut(reference::lightTable(brightness, contrast)),
                "Light");
    }

    void dither(Pair& pair) {
        const long method = input_.ConsumeIntegralInRange<long>(-1, 9);
        const bool done = pair.image.Dither(method);
        const std::uint8_t* bits = pair.image.GetBits();
        const Bytes halftone = bits == nullptr
                                   ? Bytes()
                                   : Bytes(bits, bits + std::size_t{pair.image.GetEffWidth()} *
                                                            pair.image.GetHeight());
        require(done == pair.model.dither(method, halftone), "Dither");
    }

    void one(Pair& pair, Pair& other) {
        switch (input_.ConsumeIntegralInRange(0, 16)) {
            case 0:
                create(pair);
                break;
            case 1:
            case 2:
                create_from_array(pair);
                break;
            case 3:
                require(pair.image.Destroy(), "Destroy");
                pair.model.destroy();
                break;
            case 4:
                require(pair.image.Transfer(other.image, input_.ConsumeBool()), "Transfer");
                pair.model.take(other.model);
                break;
            case 5:
                pair.image.CopyInfo(other.image);
                pair.model.copy_info(other.model);
                break;
            case 6:
                palette(pair, other);
                break;
            case 7:
                pixel(pair);
                break;
            case 8:
                require(pair.image.Rotate180() == pair.model.rotate(pair.model), "Rotate180");
                break;
            case 9:
                require(pair.image.Rotate180(&other.image) == pair.model.rotate(other.model),
                        "Rotate180 into another");
                break;
            case 10:
                pair.image.Mirror();
                pair.model.mirror();
                break;
            case 11:
                center(pair);
                break;
            case 12:
                expand(pair);
                break;
            case 13: {
                const int x0 = coordinate(pair.model.width);
                const int x1 = coordinate(pair.model.width);
                const int y0 = coordinate(pair.model.height);
                const int y1 = coordinate(pair.model.height);
                const std::uint8_t index = byte();
                pair.image.DrawLine(x0, x1, y0, y1, index);
                pair.model.line(x0, x1, y0, y1, index);
                break;
            }
            case 14:
                light(pair);
                break;
            case 15: {
                pair.image.Negative();
                pair.model.negative();
                const auto bpp = input_.ConsumeIntegralInRange<std::uint32_t>(0, 25);
                require(pair.image.IncreaseBpp(bpp) == pair.model.increase(bpp), "IncreaseBpp");
                break;
            }
            default:
                dither(pair);
                break;
        }
    }

    FuzzedDataProvider input_;
    std::uint8_t empty_ = 0;
    Pair pairs_[2];
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Operations(data, size).run();
    return 0;
}
