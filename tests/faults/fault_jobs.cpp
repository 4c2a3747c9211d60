#include "tests/faults/fault_jobs.h"

#include <stdexcept>

#include "tests/process/expected.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

Page noise_page(unsigned width, unsigned height, Random& random) {
    Page page;
    page.width = width;
    page.height = height;
    page.pixels = noise(width, height, random);
    return page;
}

}  // namespace

std::vector<Page> FaultJob::pages() const {
    // Of different sizes, so that none can pass for the other. A row is whole words, and as text
    // longer than a string holds without memory of its own.
    Random random(11);
    return {noise_page(160, 8, random), noise_page(136, 6, random)};
}

Job FaultJob::job() const {
    Job job;
    job.options = options;
    job.raster = raster_stream(pages(), packed ? CUPS_RASTER_WRITE_COMPRESSED : CUPS_RASTER_WRITE);
    job.ppd = bare_ppd()
                  .option("HalftoneType", {"None", "Ordered", "Stucki", "Tattoo", "Tattoo_X8"})
                  .option("MirrorImage", {"false", "true"})
                  .option("NegativeImage", {"false", "true"})
                  .option("Brightness", {"0", "3"})
                  .option("RecordPrinterCommands", {"0", "1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

const std::vector<FaultJob>& fault_jobs() {
    static const std::vector<FaultJob> jobs{
        {"Label", "HalftoneType=Ordered"},
        {"Tattoo", "HalftoneType=Tattoo"},
        {"Recording",
         "RecordPrinterCommands=1 HalftoneType=Stucki MirrorImage=true NegativeImage=true "
         "Brightness=3"},
        {"Packed", "HalftoneType=None", true},
    };
    return jobs;
}

std::string SentJob::whole() const {
    std::string all = preamble;
    for (const SentPage& page : pages) {
        all += page.setup + page.graphic;
    }
    return all;
}

SentJob sent_job(const std::string& output) {
    SentJob job;
    std::size_t at = output.find("SIZE ");
    job.preamble = output.substr(0, at);
    while (at != std::string::npos) {
        const std::size_t graphic = output.find("^XX\r\n^PQ", at);
        if (graphic == std::string::npos) {
            throw std::runtime_error("a page without a graphic");
        }
        const std::size_t next = output.find("SIZE ", graphic);
        job.pages.push_back(
            {output.substr(at, graphic - at),
             output.substr(graphic, next == std::string::npos ? next : next - graphic)});
        at = next;
    }
    if (job.preamble != preamble() || job.pages.size() != 2 || job.whole() != output) {
        throw std::runtime_error("not the output of a job of two pages");
    }
    return job;
}

std::size_t count_of(const std::string& text, std::string_view part) {
    std::size_t times = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++times;
    }
    return times;
}

}  // namespace kelp_test
