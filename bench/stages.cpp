// Each stage of a page's road by itself, and the whole page, on a 4 x 6 inch label and on an A4
// stencil. Compare stages within one run only.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "bench/test_page.h"
#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "image/cx_image.h"
#include "printer/bmp.h"
#include "printer/mono_packing.h"
#include "printer/zpl_encoding.h"
#include "printer/zpl_printer.h"

namespace {

struct Size {
    const char* name;
    std::uint32_t width;
    std::uint32_t height;
};
constexpr Size kSizes[] = {{"label", 812, 1218}, {"stencil", 1664, 2496}};

void countPixels(benchmark::State& state, const TestPage& page) {
    const auto pixels = static_cast<double>(page.pixels.size());
    const auto runs = static_cast<double>(state.iterations());
    using Counter = benchmark::Counter;
    state.counters["pixel/s"] = Counter(pixels * runs, Counter::kIsRate);
    state.counters["s/pixel"] = Counter(pixels * runs, Counter::kIsRate | Counter::kInvert);
}

void load(CxImage& image, const TestPage& page) {
    image.CreateFromArray(page.pixels.data(), page.width, page.height, 8, page.width, false);
}

/// Registers a stage that changes a freshly loaded palette image.
template <typename Stage>
void addImageStage(const std::string& name, Stage stage) {
    for (const Size& size : kSizes) {
        benchmark::RegisterBenchmark((name + "/" + size.name).c_str(),
                                     [size, stage](benchmark::State& state) {
                                         const TestPage page =
                                             makeTestPage(size.width, size.height);
                                         for (auto _ : state) {
                                             state.PauseTiming();
                                             CxImage image;
                                             load(image, page);
                                             state.ResumeTiming();
                                             stage(image);
                                             benchmark::DoNotOptimize(image.GetBits(0));
                                         }
                                         countPixels(state, page);
                                     })
            ->Unit(benchmark::kMillisecond);
    }
}

/// Registers a stage that makes something of a grey page.
template <typename Stage>
void addGreyStage(const std::string& name, Stage stage) {
    for (const Size& size : kSizes) {
        benchmark::RegisterBenchmark(
            (name + "/" + size.name).c_str(),
            [size, stage](benchmark::State& state) {
                const TestPage page = makeTestPage(size.width, size.height);
                TQImage grey(static_cast<int>(page.width), static_cast<int>(page.height),
                             TQ_IMG_GRAY, page.pixels.data());
                for (auto _ : state) {
                    auto result = stage(grey);
                    benchmark::DoNotOptimize(result);
                }
                countPixels(state, page);
            })
            ->Unit(benchmark::kMillisecond);
    }
}

void addHalftones() {
    const char* const names[] = {"threshold",      "ordered", "Burkes",
                                 "Stucki",         "Jarvis",  "Sierra",
                                 "Stevenson-Arce", "Bayer",   "Floyd-Steinberg"};
    for (long method = 0; method <= 8; ++method) {
        addImageStage(std::string("dither ") + names[method],
                      [method](CxImage& image) { image.Dither(method); });
    }
}

void addToneAndGeometry() {
    addImageStage("light", [](CxImage& image) { image.Light(20, 10); });
    addImageStage("mirror", [](CxImage& image) { image.Mirror(); });
    addImageStage("rotate 180", [](CxImage& image) { image.Rotate180(); });
    addImageStage("negative", [](CxImage& image) { image.Negative(); });
    addImageStage("dither threshold + increase to 8 bits", [](CxImage& image) {
        image.Dither(0);
        image.IncreaseBpp(8);
    });
}

void addTattooStages() {
    addGreyStage("moments threshold", [](TQImage& grey) { return thresh_global_moments(grey); });
    addGreyStage("piecewise gamma", [](TQImage& grey) {
        enh_piecewise_gamma(grey, 64, 1.0F, 1.0F);
        return grey.data[0];
    });
    addGreyStage("gaussian 11, separable",
                 [](TQImage& grey) { return enh_gaussian_filter_fast(grey, 11, 3.0); });
    addGreyStage("unsharp mask 11",
                 [](TQImage& grey) { return enh_unsharp_mask(grey, 300.0F, 11); });
    addGreyStage("edf_cus", [](TQImage& grey) { return edf_cus(grey, 128); });
    addGreyStage("tattoo chain", [](TQImage& grey) { return tqTattooDithering(grey); });
    addGreyStage("tattoo X8 chain", [](TQImage& grey) { return tqTattooDitheringX8(grey); });
}

/// Standard error and the printer data go nowhere for the time of a whole-page benchmark.
class NullStreams {
  public:
    NullStreams() : null_(std::fopen("/dev/null", "w")), stderr_(stderr) { stderr = null_; }
    ~NullStreams() {
        stderr = stderr_;
        std::fclose(null_);
    }
    std::FILE* null() { return null_; }

  private:
    std::FILE* null_;
    std::FILE* stderr_;
};

void addEncodingStages() {
    addGreyStage("pack to bits", [](TQImage& grey) {
        static std::vector<unsigned char> packed;
        const auto width = static_cast<std::size_t>(grey.width);
        packed.resize((width + 7) / 8);
        for (int y = 0; y < grey.height; ++y) {
            packMonoRow(grey.data + static_cast<std::ptrdiff_t>(y) * grey.width, width,
                        packed.data());
        }
        return packed[0];
    });
    for (const Size& size : kSizes) {
        benchmark::RegisterBenchmark(
            (std::string("encode rows/") + size.name).c_str(),
            [size](benchmark::State& state) {
                const TestPage page = makeTestPage(size.width, size.height);
                CxImage image;
                load(image, page);
                image.Dither(2);
                std::string text;
                for (auto _ : state) {
                    text.clear();
                    for (std::uint32_t y = 0; y < page.height; ++y) {
                        zplAppendRow(text, image.GetBits(y), (page.width + 7) / 8);
                    }
                    benchmark::DoNotOptimize(text.data());
                }
                countPixels(state, page);
            })
            ->Unit(benchmark::kMillisecond);
    }
}

void addWholePages() {
    const struct {
        const char* name;
        DitherType type;
    } pages[] = {{"whole page, threshold", DitherNone},
                 {"whole page, Burkes", DitherOrdered},
                 {"whole page, tattoo", DitherTattoo}};
    for (const auto& kind : pages) {
        for (const Size& size : kSizes) {
            benchmark::RegisterBenchmark(
                (std::string(kind.name) + "/" + size.name).c_str(),
                [size, kind](benchmark::State& state) {
                    NullStreams streams;
                    const TestPage page = makeTestPage(size.width, size.height);
                    ZplPrinter printer;
                    printer.getOutputStreams() = {streams.null()};
                    printer.setHalftoneType(kind.type);
                    sPrinter = &printer;
                    for (auto _ : state) {
                        LastSet = 0;
                        std::vector<unsigned char> out(
                            printer.processedSize(page.width, page.height, page.width));
                        printer.PageProcess(kind.type, page.pixels.data(),
                                            static_cast<int>(page.width),
                                            static_cast<int>(page.width),
                                            static_cast<int>(page.height), out.data());
                        const CxImage* dots = printer.processedImage();
                        printer.doPrintImage(dots->GetBits(0), dots->GetEffWidth(),
                                             dots->GetHeight(), dots->GetWidth());
                    }
                    sPrinter = nullptr;
                    countPixels(state, page);
                })
                ->Unit(benchmark::kMillisecond);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    addHalftones();
    addToneAndGeometry();
    addTattooStages();
    addEncodingStages();
    addWholePages();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
