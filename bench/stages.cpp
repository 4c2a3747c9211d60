#include "bench/stages.h"

#include <algorithm>
#include <memory>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "image/cx_image.h"
#include "image/dot_packing.h"
#include "image/error_diffusion.h"
#include "image/ordered_dither.h"
#include "printer/mono_packing.h"
#include "printer/zpl_encoding.h"
#include "tests/reference/dither.h"
#include "tests/reference/encoding.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/moments.h"
#include "tests/reference/strided.h"
#include "tests/reference/tattoo.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using Run = std::function<void()>;

std::size_t packedBytes(const TestPage& page) {
    return (page.width + 7) / 8;
}

reference::GrayImage literalImage(const TestPage& page) {
    return {static_cast<int>(page.width), static_cast<int>(page.height), page.pixels};
}

// --- Tone and geometry: on the palette image, over and over on the same one ---

template <typename Change>
Stage::Prepare onImage(Change change) {
    return [change](const TestPage& page) -> Run {
        auto image = std::make_shared<CxImage>();
        image->CreateFromArray(page.pixels.data(), page.width, page.height, 8, page.width, false);
        return [image, change] { change(*image); };
    };
}

template <typename Make>
Stage::Prepare onStrided(Make make) {
    return [make](const TestPage& page) -> Run {
        const auto image =
            reference::loadStrided(page.pixels.data(), static_cast<int>(page.width),
                                   static_cast<int>(page.height), static_cast<int>(page.width));
        return [image, make] { make(*image); };
    };
}

void addToneAndGeometry(std::vector<Stage>& all) {
    using reference::StridedImage;
    all.push_back({"light", onImage([](CxImage& image) { image.Light(20, 10); }),
                   onStrided([](const StridedImage& image) { reference::light(image, 20, 10); }),
                   false});
    all.push_back({"mirror", onImage([](CxImage& image) { image.Mirror(); }),
                   onStrided([](const StridedImage& image) { reference::mirror(image); }), false});
    all.push_back({"rotate 180", onImage([](CxImage& image) { image.Rotate180(); }),
                   onStrided([](const StridedImage& image) { reference::rotate180(image); }),
                   false});
}

// --- Halftones: from the page's bytes to a row of bits each ---

template <typename Row>
Stage::Prepare byRow(Row row) {
    return [row](const TestPage& page) -> Run {
        return [&page, row, dots = Bytes(packedBytes(page) * page.height)]() mutable {
            for (std::size_t y = 0; y < page.height; ++y) {
                row(page.pixels.data() + y * page.width, page.width, y,
                    dots.data() + y * packedBytes(page));
            }
        };
    };
}

Stage::Prepare literalDither(long method) {
    return [method](const TestPage& page) -> Run {
        return [image = literalImage(page), method] { reference::dither(image, method); };
    };
}

Stage::Prepare diffusion(ErrorKernel kernel) {
    return [kernel](const TestPage& page) -> Run {
        return [&page, kernel, dots = Bytes(packedBytes(page) * page.height)]() mutable {
            diffuseErrors(kernel, {page.pixels.data(), page.width, page.width, page.height},
                          {dots.data(), packedBytes(page)});
        };
    };
}

void addHalftones(std::vector<Stage>& all) {
    all.push_back({"threshold",
                   byRow([](const std::uint8_t* grey, std::size_t width, std::size_t /*y*/,
                            std::uint8_t* dots) { thresholdRow(grey, width, dots); }),
                   literalDither(0), true});
    all.push_back({"ordered", byRow(orderedRow), literalDither(1), true});
    all.push_back({"ordered (Bayer)", byRow(bayerRow), literalDither(7), true});
    const struct {
        const char* name;
        ErrorKernel kernel;
        long method;
    } kernels[] = {{"Floyd-Steinberg", ErrorKernel::FloydSteinberg, 8},
                   {"Burkes", ErrorKernel::Burkes, 2},
                   {"Stucki", ErrorKernel::Stucki, 3},
                   {"Jarvis-Judice-Ninke", ErrorKernel::JarvisJudiceNinke, 4},
                   {"Sierra", ErrorKernel::Sierra, 5},
                   {"Stevenson-Arce", ErrorKernel::StevensonArce, 6}};
    for (const auto& each : kernels) {
        all.push_back({each.name, diffusion(each.kernel), literalDither(each.method), true});
    }
}

// --- From dots to printer data: of the page in Burkes' dots ---

/// A byte for each dot, and the same packed.
struct Dots {
    std::size_t width;
    std::size_t height;
    Bytes bytes;
    Bytes bits;
    std::size_t rowBits() const { return (width + 7) / 8; }
};

std::shared_ptr<Dots> dotsOf(const TestPage& page) {
    auto dots = std::make_shared<Dots>();
    dots->width = page.width;
    dots->height = page.height;
    dots->bits.resize(dots->rowBits() * page.height);
    dots->bytes.resize(page.pixels.size());
    diffuseErrors(ErrorKernel::Burkes, {page.pixels.data(), page.width, page.width, page.height},
                  {dots->bits.data(), dots->rowBits()});
    for (std::size_t y = 0; y < page.height; ++y) {
        unpackDots(&dots->bits[y * dots->rowBits()], dots->width, &dots->bytes[y * dots->width]);
    }
    return dots;
}

template <typename Row>
Stage::Prepare byDotRow(Row row) {
    return [row](const TestPage& page) -> Run {
        const auto dots = dotsOf(page);
        return [dots, row, packed = Bytes(dots->rowBits()), wide = Bytes(dots->width),
                text = std::string()]() mutable {
            text.clear();
            for (std::size_t y = 0; y < dots->height; ++y) {
                row(&dots->bytes[y * dots->width], &dots->bits[y * dots->rowBits()], dots->width,
                    packed.data(), wide.data(), text);
            }
        };
    };
}

template <bool packs, bool encodes>
Stage::Prepare literalEncoding() {
    return [](const TestPage& page) -> Run {
        const auto dots = dotsOf(page);
        return [dots] {
            Bytes packed = dots->bits;
            if constexpr (packs) {
                packed = reference::grayToMono(static_cast<int>(dots->width),
                                               static_cast<int>(dots->height), 0, dots->bytes);
            }
            if constexpr (encodes) {
                std::string text;
                int lastSet = 0;
                for (std::size_t y = 0; y < dots->height; ++y) {
                    const auto first =
                        packed.begin() + static_cast<std::ptrdiff_t>(y * dots->rowBits());
                    const auto end = first + static_cast<std::ptrdiff_t>(dots->rowBits());
                    text += reference::encodeRow({first, end}, lastSet);
                }
            }
        };
    };
}

void addEncoding(std::vector<Stage>& all) {
    all.push_back({"widen to 8 bits",
                   byDotRow([](const std::uint8_t*, const std::uint8_t* bits, std::size_t width,
                               std::uint8_t*, std::uint8_t* wide,
                               std::string&) { unpackDots(bits, width, wide); }),
                   {},
                   true});
    all.push_back({"pack to bits",
                   byDotRow([](const std::uint8_t* bytes, const std::uint8_t*, std::size_t width,
                               std::uint8_t* packed, std::uint8_t*,
                               std::string&) { packMonoRow(bytes, width, packed); }),
                   literalEncoding<true, false>(), true});
    all.push_back({"encode rows",
                   byDotRow([](const std::uint8_t*, const std::uint8_t* bits, std::size_t width,
                               std::uint8_t*, std::uint8_t*,
                               std::string& text) { zplAppendRow(text, bits, (width + 7) / 8); }),
                   literalEncoding<false, true>(), true});
    all.push_back({"pack + encode",
                   byDotRow([](const std::uint8_t* bytes, const std::uint8_t*, std::size_t width,
                               std::uint8_t* packed, std::uint8_t*, std::string& text) {
                       packMonoRow(bytes, width, packed);
                       zplAppendRow(text, packed, (width + 7) / 8);
                   }),
                   literalEncoding<true, true>(), true});
}

// --- Stencils ---

template <typename Make>
Stage::Prepare onGrey(Make make) {
    return [make](const TestPage& page) -> Run {
        const auto grey =
            std::make_shared<TQImage>(static_cast<int>(page.width), static_cast<int>(page.height),
                                      TQ_IMG_GRAY, page.pixels.data());
        return [grey, make] { make(*grey); };
    };
}

template <typename Make>
Stage::Prepare literal(Make make) {
    return [make](const TestPage& page) -> Run {
        return [image = literalImage(page), make] { make(image); };
    };
}

void applyTattooCurve(const TQImage& grey) {
    static const ToneCurve curve = piecewiseGammaTable(64, 0.85F, 0.7F);
    const auto width = static_cast<std::size_t>(grey.width);
    std::vector<unsigned char> row(width);
    for (std::int32_t y = 0; y < grey.height; ++y) {
        applyToneCurve(curve, grey.data + static_cast<std::size_t>(y) * width, width, row.data());
    }
}

void addTattooStages(std::vector<Stage>& all) {
    using reference::GrayImage;
    all.push_back({"moments threshold",
                   onGrey([](const TQImage& grey) { thresh_global_moments(grey); }),
                   literal(reference::thresholdGlobalMoments), false});
    all.push_back({"tone curve", onGrey(applyTattooCurve), literal([](const GrayImage& grey) {
                       reference::piecewiseGamma(grey, 64, 0.85F, 0.7F);
                   }),
                   false});
    all.push_back(
        {"unsharp mask", onGrey([](const TQImage& grey) { enh_unsharp_mask(grey, 300.0F, 11); }),
         literal([](const GrayImage& grey) { reference::unsharpMask(grey, 300.0F, 11); }), true});
    all.push_back({"edf_cus", onGrey([](const TQImage& grey) { edf_cus(grey, 128); }),
                   literal([](const GrayImage& grey) { reference::edfCus(grey, 128); }), true});
    all.push_back({"tattoo chain", onGrey([](TQImage& grey) { tqTattooDithering(grey); }),
                   literal([](const GrayImage& grey) { reference::tattooDithering(grey); }), true});
    all.push_back({"tattoo X8 chain", onGrey([](TQImage& grey) { tqTattooDitheringX8(grey); }),
                   literal([](const GrayImage& grey) { reference::tattooDitheringX8(grey); }),
                   true});
}

}  // namespace

std::vector<Stage> stages() {
    std::vector<Stage> all;
    addToneAndGeometry(all);
    addHalftones(all);
    addEncoding(all);
    addTattooStages(all);
    return all;
}
