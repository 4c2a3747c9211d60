// Random jobs, held to the reference. Two environment variables change what is tried:
//
//   KELP_TEST_RANDOM_JOBS   how many jobs each test tries (default 60)
//   KELP_TEST_SEED          the seed of the first job (default 1); the next job has the next seed
//
// A failure names its seed: with KELP_TEST_SEED set to it and KELP_TEST_RANDOM_JOBS to 1 the test
// tries that one job again.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/process/reference_comparison.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

std::uint64_t number_from_environment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtoull(text, nullptr, 10) : otherwise;
}

// A random choice for about two thirds of the options.
std::string random_options(Random& random) {
    std::string options;
    for (const OptionChoices& option : generous_options()) {
        if (!random.one_in(3)) {
            options += option.name + "=" + random.pick(option.choices) + " ";
        }
    }
    return options;
}

std::string random_pixels(unsigned width, unsigned height, Random& random) {
    switch (random.between(0, 5)) {
        case 0:
            return gradient(width, height);
        case 1:
            return text_bars(width, height, random);
        case 2:
            return asymmetric(width, height);
        case 3: {
            // Two levels and a few specks.
            std::string pixels =
                uniform(width, height, static_cast<unsigned char>(random.between(0, 255)));
            for (int specks = random.between(0, 30); specks > 0; --specks) {
                const int last = static_cast<int>(pixels.size()) - 1;
                pixels[static_cast<std::size_t>(random.between(0, last))] =
                    static_cast<char>(random.between(0, 255));
            }
            return pixels;
        }
        default:
            return noise(width, height, random);
    }
}

Page random_page(int largest, Random& random) {
    Page page;
    page.width = static_cast<unsigned>(random.between(1, largest));
    page.height = static_cast<unsigned>(random.between(1, largest));
    if (random.one_in(4)) {
        page.bytes_per_line = page.width + static_cast<unsigned>(random.between(0, 9));
    }
    const std::vector<unsigned> resolutions{203, 203, 203, 300, 600, 72, 1};
    page.resolution_x = random.pick(resolutions);
    page.resolution_y = random.one_in(5) ? random.pick(resolutions) : page.resolution_x;
    page.color_space = random.one_in(2) ? CUPS_CSPACE_K : CUPS_CSPACE_W;
    page.copies = static_cast<unsigned>(random.between(0, 4));
    page.size_name = random.one_in(3) ? "A4" : "";
    page.pixels = random_pixels(page.stride(), page.height, random);
    return page;
}

std::vector<Page> random_pages(int most, int largest, Random& random) {
    std::vector<Page> pages;
    for (int count = random.between(1, most); count > 0; --count) {
        pages.push_back(random_page(largest, random));
    }
    return pages;
}

Job random_job(const std::vector<Page>& pages, Random& random) {
    Job job;
    job.ppd = generous_ppd().text();
    job.options = random_options(random);
    const std::vector<cups_mode_t> modes{CUPS_RASTER_WRITE, CUPS_RASTER_WRITE_COMPRESSED};
    job.raster = raster_stream(pages, random.pick(modes));
    job.by_file = random.one_in(2);
    job.time = random.between(0, 2'000'000'000);
    return job;
}

template <typename MakeJob>
void compare_random_jobs(MakeJob make_job) {
    const std::uint64_t jobs = number_from_environment("KELP_TEST_RANDOM_JOBS", 60);
    const std::uint64_t first = number_from_environment("KELP_TEST_SEED", 1);
    ASSERT_GT(jobs, 0U);
    for (std::uint64_t seed = first; seed < first + jobs; ++seed) {
        Random random(seed);
        const Job job = make_job(random);
        expect_like_reference(job, "KELP_TEST_SEED=" + std::to_string(seed) + ": " + job.options);
        if (testing::Test::HasFailure()) {
            return;  // one job is enough to look at
        }
    }
}

TEST(RandomJobs, OfOneSmallPage) {
    compare_random_jobs(
        [](Random& random) { return random_job({random_page(70, random)}, random); });
}

TEST(RandomJobs, OfSeveralSmallPages) {
    compare_random_jobs(
        [](Random& random) { return random_job(random_pages(5, 40, random), random); });
}

TEST(RandomJobs, OfLargerPages) {
    compare_random_jobs(
        [](Random& random) { return random_job(random_pages(2, 260, random), random); });
}

TEST(RandomJobs, ThatEndTooEarly) {
    compare_random_jobs([](Random& random) {
        Job job = random_job(random_pages(3, 40, random), random);
        const auto size = static_cast<int>(job.raster.size());
        job.raster.resize(static_cast<std::size_t>(random.between(0, size - 1)));
        return job;
    });
}

}  // namespace
}  // namespace kelp_test
