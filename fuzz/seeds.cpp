// Makes the fuzzers' seeds of the streams that the tests use.
//
//     fuzz_seeds FOLDER      writes FOLDER/TARGET/NAME

#include <cups/raster.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/page_loop_plan.h"
#include "fuzz/raster_job.h"
#include "tests/fitter/rasters.h"
#include "tests/support/files.h"
#include "tests/support/generous_ppd.h"
#include "tests/support/grey_pages.h"
#include "tests/support/raster_stream.h"

namespace {

using kelp_fuzz::RasterJob;
using kelp_test::Page;
using kelp_test::Random;
using kelp_test::RawPage;

class Seeds {
  public:
    Seeds(std::filesystem::path folder, const std::string& target)
        : folder_(std::move(folder) / target) {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    void add(const std::string& content) {
        kelp_test::write_file(folder_ / std::to_string(++count_), content);
    }

  private:
    std::filesystem::path folder_;
    int count_ = 0;
};

struct Picture {
    unsigned width;
    unsigned height;
    std::string pixels;
};

// Of every kind that the tests print.
std::vector<Picture> pictures(Random& random) {
    std::vector<Picture> result;
    for (const auto& [width, height] : {std::pair{16U, 2U}, {17U, 9U}, {40U, 30U}, {1U, 1U}}) {
        result.push_back({width, height, kelp_test::uniform(width, height, 255)});
        result.push_back({width, height, kelp_test::gradient(width, height)});
        result.push_back({width, height, kelp_test::noise(width, height, random)});
        result.push_back({width, height, kelp_test::text_bars(width, height, random)});
        result.push_back({width, height, kelp_test::asymmetric(width, height)});
    }
    return result;
}

Page page_of(const Picture& picture) {
    Page page;
    page.width = picture.width;
    page.height = picture.height;
    page.pixels = picture.pixels;
    return page;
}

std::string random_plan(Random& random) {
    std::string plan(RasterJob::plan_size, '\0');
    plan[RasterJob::form] = static_cast<char>(random.between(0, RasterJob::forms - 1));
    for (std::size_t i = RasterJob::own; i < plan.size(); ++i) {
        plan[i] = static_cast<char>(random.between(0, 255));
    }
    return plan;
}

// Headers that libcups does not hand over by itself, or only with pages of that many bytes.
void make_changed_headers(Seeds& seeds, const std::string& stream, Random& random) {
    using kelp_fuzz::ChangedField;
    for (const auto& [field, value] : {std::pair{ChangedField::width, 0U},
                                       {ChangedField::width, 0x7FFFFFFFU},
                                       {ChangedField::height, 0U},
                                       {ChangedField::height, 0x100000U},
                                       {ChangedField::height, 0x7FFFFFFFU},
                                       {ChangedField::bytes_per_line, 0U},
                                       {ChangedField::bits_per_pixel, 1U},
                                       {ChangedField::resolution_x, 0U},
                                       {ChangedField::resolution_y, 0U},
                                       {ChangedField::page_size_name, 0U},
                                       {ChangedField::page_size_name, 1U},
                                       {ChangedField::page_size_name, 2U},
                                       {ChangedField::page_size_name, 3U},
                                       {ChangedField::unended_name, 0U}}) {
        for (const bool is_plain : {true, false}) {
            std::string plan =
                is_plain ? std::string(RasterJob::plan_size, '\0') : random_plan(random);
            if (!is_plain && field == ChangedField::page_size_name) {
                // A border of 1 to 10 mm at 10 to 30 dots per inch.
                using namespace kelp_fuzz::page_loop_plan;
                plan[unusual] = 1;
                plan[border] = static_cast<char>(random.between(1, 10));
                plan[border_shift] = 0;
                plan[resolution] = static_cast<char>(random.between(10, 30));
            }
            plan[RasterJob::change] = static_cast<char>(field);
            plan[RasterJob::change_value] = static_cast<char>(value & 255);
            plan[RasterJob::change_value + 2] = static_cast<char>(value >> 16 & 255);
            plan[RasterJob::change_value + 3] = static_cast<char>(value >> 24);
            plan[RasterJob::change_page] = 0;
            seeds.add(plan + stream);
        }
    }
}

// A packed stream whose header names a row that libcups finds no room for.
std::string with_a_huge_row(const Picture& picture) {
    std::string stream = kelp_test::raster_stream({page_of(picture)}, CUPS_RASTER_WRITE_COMPRESSED);
    const unsigned huge = 0xF0000000;
    const std::size_t sync_word = 4;
    stream.replace(sync_word + offsetof(cups_page_header2_t, cupsBytesPerLine), sizeof huge,
                   reinterpret_cast<const char*>(&huge), sizeof huge);
    return stream;
}

void make_page_loop(Seeds seeds) {
    Random random(1);
    const std::vector<Picture> all = pictures(random);
    for (const Picture& picture : all) {
        const Page page = page_of(picture);
        const std::string stream = kelp_test::raw_raster_stream({raw_page(page)});
        seeds.add(std::string(RasterJob::plan_size, '\0') + stream);
        seeds.add(random_plan(random) + stream);
        seeds.add(random_plan(random) + kelp_test::raw_raster_stream(
                                            {raw_page(page), raw_page(page_of(random.pick(all)))}));
    }
    make_changed_headers(seeds, kelp_test::raw_raster_stream({raw_page(page_of(all[2]))}), random);
    const std::string plain(RasterJob::plan_size, '\0');
    seeds.add(plain + "no raster");
    seeds.add(plain + kelp_test::raster_stream({page_of(all[3])}, CUPS_RASTER_WRITE_COMPRESSED));
    seeds.add(plain + with_a_huge_row(all[3]));
    seeds.add(plain + kelp_test::swapped_raster_stream({raw_page(page_of(all[2]))}));
}

void make_page_fitter(Seeds seeds) {
    Random random(2);
    for (const kelp_test::Kind& kind : kelp_test::kinds()) {
        for (const unsigned width : {1U, 20U, 60U}) {
            const unsigned height = width / 4 + 1;
            const RawPage page =
                page_of(kind, width, height, noise(kind.row_bytes(width), height, random));
            for (int count = 1; count <= 2; ++count) {
                seeds.add(random_plan(random) + kelp_test::raw_raster_stream(std::vector<RawPage>(
                                                    static_cast<std::size_t>(count), page)));
            }
        }
    }
    std::string plan(RasterJob::plan_size, '\0');
    plan[RasterJob::own] = plan[RasterJob::own + 1] = 12;  // dots of the page, across and down
    seeds.add(plan + with_a_huge_row(pictures(random)[3]));
}

void make_settings(Seeds seeds) {
    const std::string parted(1, '\0');
    for (const std::string& description :
         {kelp_test::generous_ppd().text(), kelp_test::bare_ppd().custom_page_size().text(),
          kelp_test::bare_ppd().text(), std::string()}) {
        seeds.add(parted + description);
        seeds.add("PageSize=Custom.100x200mm Brightness=7" + parted + description);
    }
    std::string options;
    for (const kelp_test::OptionChoices& option : kelp_test::generous_options()) {
        // One by one with a description of its own, and all together.
        kelp_test::Ppd small = kelp_test::bare_ppd();
        small.option(option.name, option.choices);
        for (const std::string& choice : option.choices) {
            std::string setting = option.name;
            setting += "=" + choice;
            seeds.add(setting + parted + small.text());
        }
        options += option.name + "=" + option.choices.back() + " ";
    }
    seeds.add(options + parted + kelp_test::generous_ppd().text());
}

// Inputs that are read as numbers: any bytes, and pictures before some.
void make_images(const std::vector<Seeds>& targets) {
    Random random(3);
    for (Seeds seeds : targets) {
        for (const Picture& picture : pictures(random)) {
            seeds.add(picture.pixels + kelp_test::noise(40, 1, random));
            seeds.add(kelp_test::noise(30, 10, random));
        }
    }
}

void make_printer_stream(Seeds seeds) {
    for (const auto& [name, content] : kelp_test::read_directory(KELP_GOLDEN_DIR)) {
        if (name.ends_with(".zpl")) {
            // The last byte is the limit; see printer_stream.cpp.
            for (const int limit : {0, 4, 20, 100}) {
                seeds.add(content + static_cast<char>(limit));
            }
        }
    }
}

void make_pgm(Seeds seeds) {
    for (const char* file : {"P5\n3 2\n255\n123456", "P2 # comment\n3 1 255\n0 128 255\n",
                             "P5 1 1 65535 AB", "P2 2 1 1 0 1", "P5 4 1 300\n12345678"}) {
        seeds.add(file);
    }
    Random random(4);
    for (const Picture& picture : pictures(random)) {
        seeds.add("P5\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) +
                  "\n255\n" + picture.pixels);
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    try {
        const std::filesystem::path folder = argc == 2 ? argv[1] : "seeds";
        make_page_loop({folder, "page_loop"});
        make_page_fitter({folder, "page_fitter"});
        make_settings({folder, "settings"});
        make_images({{folder, "dither"},
                     {folder, "tattoo"},
                     {folder, "row_encoding"},
                     {folder, "palette_image"}});
        make_printer_stream({folder, "printer_stream"});
        make_pgm({folder, "pgm"});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fuzz_seeds: %s\n", error.what());
        return 1;
    }
}
