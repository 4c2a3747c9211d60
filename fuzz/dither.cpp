// CxImage's halftones and the operations before them on any image, held to the reference byte by
// byte, row padding included.

#include <fuzzer/FuzzedDataProvider.h>

#include <vector>

#include "fuzz/any_form.h"
#include "fuzz/check.h"
#include "image/cx_image.h"
#include "tests/reference/dither.h"
#include "tests/reference/strided.h"

namespace {

using kelp_fuzz::require;

void compare(const CxImage& image, const reference::StridedImage& expected, const char* what) {
    require(image.GetBpp() == 8 && image.GetWidth() == static_cast<unsigned>(expected.width) &&
                image.GetHeight() == static_cast<unsigned>(expected.height) &&
                image.GetEffWidth() == static_cast<unsigned>(expected.stride),
            what);
    const unsigned char* bytes = image.GetBits();
    require(std::equal(expected.px.begin(), expected.px.end(), bytes), what);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const simd::ForcedForm forced(kelp_fuzz::any_form(input));
    // Vectors hold up to 32 pixels; bands have up to 32 rows, four columns from one to the next.
    const int width = input.ConsumeIntegralInRange(1, input.ConsumeBool() ? 200 : 44);
    const int height = input.ConsumeIntegralInRange(1, input.ConsumeBool() ? 70 : 20);
    const int padding = input.ConsumeIntegralInRange(0, 9);
    const long method = input.ConsumeIntegralInRange<long>(-1, 9);
    const int brightness = input.ConsumeBool() ? input.ConsumeIntegralInRange(-510, 510) : 0;
    const int contrast = input.ConsumeBool() ? input.ConsumeIntegralInRange(-210, 210) : 0;
    const int stride = width + padding;
    std::vector<unsigned char> pixels = input.ConsumeBytes<unsigned char>(
        static_cast<std::size_t>(stride) * static_cast<std::size_t>(height));
    // What is missing goes on as what there is.
    const std::size_t given = pixels.size();
    pixels.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height));
    for (std::size_t i = given; given > 0 && i < pixels.size(); ++i) {
        pixels[i] = pixels[i % given];
    }

    CxImage image;
    require(image.CreateFromArray(pixels.data(), static_cast<std::uint32_t>(width),
                                  static_cast<std::uint32_t>(height), 8,
                                  static_cast<std::uint32_t>(stride), false),
            "an image is not taken");
    auto expected = reference::loadStrided(pixels.data(), width, height, stride).value();
    compare(image, expected, "a loaded image differs");
    if (brightness != 0 || contrast != 0) {
        require(image.Light(brightness, contrast), "no light");
        expected = reference::light(expected, brightness, contrast);
        compare(image, expected, "brightness and contrast differ");
    }
    if (input.ConsumeBool()) {
        require(image.Rotate180(), "not turned");
        expected = reference::rotate180(expected);
        compare(image, expected, "a turned image differs");
    }
    if (input.ConsumeBool()) {
        image.Mirror();
        expected = reference::mirror(expected);
        compare(image, expected, "a mirrored image differs");
    }
    require(image.Dither(method) && image.GetBpp() == 1 && image.IncreaseBpp(8), "no halftone");
    expected = reference::ditherToIndices(expected, method);
    compare(image, expected, "a halftone differs");
    image.Negative();
    compare(image, reference::negative(expected), "a negative differs");
    return 0;
}
