#include "tools/kelp-preview/sheet/sheet_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "preview/png_writer.h"
#include "preview/stream_decoder.h"
#include "preview/whole_file.h"
#include "tools/kelp-preview/options.h"
#include "tools/kelp-preview/progress.h"
#include "tools/kelp-preview/sheet/caption.h"
#include "tools/kelp-preview/sheet/contact_sheet.h"
#include "tools/kelp-preview/sheet/halftone_print.h"
#include "tools/kelp-preview/sheet/halftones.h"
#include "tools/kelp-preview/sheet/read_picture.h"
#include "tools/kelp-preview/status.h"

namespace {

namespace fs = std::filesystem;

struct SheetOptions {
    std::string file;
    std::string sheet;  ///< empty for a name made from the file's
    std::string page = "4x6in";
    unsigned number = 1;
    bool pixelsAreDots = false;
    std::vector<std::string> halftones;  ///< empty for all
    PrintOptions print;
    std::uint64_t maxDots = kelp_preview::DecoderLimits{}.maxDots;
};

std::string sheetName(const SheetOptions& options) {
    std::string name = options.sheet.empty() ? fs::path(options.file).stem().string() + "-sheet.png"
                                             : options.sheet;
    std::error_code none;
    if (fs::equivalent(name, options.file, none)) {
        throw std::runtime_error("the sheet would replace the picture " + options.file);
    }
    return name;
}

/// The picture on a page whose width prints as it is, white at its right.
GreyPicture pageOf(const GreyPicture& picture) {
    GreyPicture page{paddedWidth(picture.width), picture.height, {}};
    page.pixels.assign(std::size_t{page.width} * page.height, 255);
    for (std::size_t y = 0; y < picture.height; ++y) {
        std::copy_n(picture.pixels.data() + y * picture.width, picture.width,
                    page.pixels.data() + y * page.width);
    }
    return page;
}

std::string percent(const kelp_preview::Bitmap& print) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f %%",
                  100.0 * static_cast<double>(blackDots(print)) /
                      (static_cast<double>(print.width) * static_cast<double>(print.height)));
    return text;
}

/// Readable beside prints of any size.
std::uint32_t captionSize(const GreyPicture& page) {
    return std::clamp(page.width / 30, 14U, 48U);
}

std::vector<Halftone> chosenHalftones(const SheetOptions& options) {
    std::vector<Halftone> chosen;
    for (const Halftone& halftone : kHalftones) {
        if (options.halftones.empty() ||
            std::count(options.halftones.begin(), options.halftones.end(), halftone.optionName()) !=
                0) {
            chosen.push_back(halftone);
        }
    }
    return chosen;
}

void checkSheetSize(const GreyPicture& page, std::size_t count, std::uint64_t maxDots) {
    if (std::uint64_t{page.width} * page.height > maxDots / count) {
        throw PictureError("a sheet of " + std::to_string(count) + " prints of " +
                           std::to_string(page.width) + " x " + std::to_string(page.height) +
                           " dots is over the limit of " + std::to_string(maxDots));
    }
}

int sheet(const SheetOptions& options) {
    const std::string name = sheetName(options);
    Progress progress;
    progress.show("reading " + options.file);
    const PageSize size = parsePageSize(options.page).value();
    const GreyPicture page = pageOf(
        readPicture({options.file, options.number, size, options.pixelsAreDots, options.maxDots},
                    [&] { progress.show("drawing " + options.file); }));
    const std::vector<Halftone> halftones = chosenHalftones(options);
    checkSheetSize(page, halftones.size(), options.maxDots);

    std::vector<SheetCell> cells;
    for (const Halftone& halftone : halftones) {
        progress.show(std::to_string(cells.size()) + " of " + std::to_string(halftones.size()) +
                      " halftones");
        kelp_preview::Bitmap print = printHalftone(page, halftone, options.print);
        kelp_preview::Bitmap caption = drawCaption(
            {halftone.optionName(), std::string(halftone.runs), percent(print) + " black"},
            captionSize(page));
        cells.push_back({std::move(print), std::move(caption)});
    }
    progress.show("writing " + name);
    const kelp_preview::Bitmap picture = drawSheet(cells);
    kelp_preview::writeWholeFile(name, pngOf(picture));
    progress.clear();

    std::printf("%-20s %-26s %s\n", "HalftoneType", "what prints", "black dots");
    for (std::size_t i = 0; i < cells.size(); ++i) {
        std::printf("%-20s %-26s %10s\n", halftones[i].optionName(),
                    std::string(halftones[i].runs).c_str(), percent(cells[i].print).c_str());
    }
    std::printf("%s: %llu x %llu dots, each print %u x %u\n", name.c_str(),
                static_cast<unsigned long long>(picture.width),
                static_cast<unsigned long long>(picture.height), page.width, page.height);
    return kStatusDone;
}

std::vector<std::string> halftoneNames() {
    std::vector<std::string> names;
    names.reserve(kHalftones.size());
    for (const Halftone& halftone : kHalftones) {
        names.emplace_back(halftone.optionName());
    }
    return names;
}

}  // namespace

void addSheet(CLI::App& app, int& status) {
    const auto options = std::make_shared<SheetOptions>();
    CLI::App* command =
        app.add_subcommand("sheet", "Show a picture or a page in every halftone, on one sheet");
    command->add_option("FILE", options->file, "A PNG, JPEG, PGM, PDF or PostScript file")
        ->required();
    addPictureOption(*command, "-o,--output", options->sheet,
                     "Write the sheet here; FILE-sheet.png without it");
    CLI::Option* page =
        command
            ->add_option(
                "--page", options->page,
                "Scale to this size: 4x6in, 100x150mm, 812x1218 (dots), A4, A5, A6, Letter")
            ->type_name("SIZE")
            ->check([](const std::string& text) {
                return parsePageSize(text) ? "" : "no size from 8 to 100000 dots a side: " + text;
            })
            ->capture_default_str();
    // Not by its name: looking that up takes memory where failing must not happen.
    command->add_flag("--pixels-are-dots", options->pixelsAreDots, "Do not scale a picture")
        ->excludes(page);
    command->add_option("--page-number", options->number, "The page of a PDF")
        ->type_name("N")
        ->check(CLI::Range(1U, 1'000'000U))
        ->capture_default_str();
    command->add_option("--halftone", options->halftones, "Show only this one; may be repeated")
        ->type_name("NAME")
        ->check(CLI::IsMember(halftoneNames()))
        ->allow_extra_args(false);
    command
        ->add_option("--brightness", options->print.brightness,
                     "The job option Brightness: higher is darker, lighter with a stencil")
        ->type_name("N")
        ->check(CLI::Range(-100, 100))
        ->capture_default_str();
    command->add_flag("--mirror", options->print.mirror, "The job option MirrorImage");
    command->add_flag("--negative", options->print.negative,
                      "White on black with a stencil; other halftones print solid black");
    addMaxDotsOption(*command, options->maxDots);
    command->callback([options, &status] { status = sheet(*options); });
}
