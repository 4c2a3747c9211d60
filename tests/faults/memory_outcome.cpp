#include "tests/faults/memory_outcome.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "tests/process/expected.h"
#include "tests/reference/encoding.h"
#include "tests/reference/graphic.h"

namespace kelp_test {
namespace {

using Bytes = std::vector<unsigned char>;

std::string graphic_of(const Page& page, const Bytes& dots) {
    int last_set = 0;
    return reference::encodeLabel(static_cast<int>(page.width), static_cast<int>(page.height), 0, 1,
                                  dots, last_set);
}

// A byte per dot.
Bytes dots_of(const Page& page, const std::string& graphic) {
    const std::size_t begin = graphic.find('\n', graphic.find("~DG")) + 1;
    const std::string data = graphic.substr(begin, graphic.find("^FO") - begin);
    Bytes dots;
    for (const std::string& row : reference::readGraphic(data, page.width / 8, page.height).rows) {
        for (const char digit : row) {
            const int value = digit <= '9' ? digit - '0' : digit - 'A' + 10;
            for (int bit = 3; bit >= 0; --bit) {
                dots.push_back(static_cast<unsigned char>(value >> bit & 1));
            }
        }
    }
    return dots;
}

// What the halftone is given, and what becomes of it behind the halftone. A brightness of 3
// adds 15.
Bytes toned(const FaultJob& job, const Page& page) {
    const auto asks_for = [&](const char* option) {
        return std::strstr(job.options, option) != nullptr;
    };
    Bytes pixels(page.pixels.begin(), page.pixels.end());
    for (std::size_t row = 0; row < pixels.size() && asks_for("MirrorImage=true");
         row += page.width) {
        const auto begin = pixels.begin() + static_cast<std::ptrdiff_t>(row);
        std::reverse(begin, begin + page.width);
    }
    for (unsigned char& pixel : pixels) {
        const int brighter = std::min(255, pixel + (asks_for("Brightness=3") ? 15 : 0));
        pixel =
            static_cast<unsigned char>(asks_for("NegativeImage=true") ? 255 - brighter : brighter);
    }
    return pixels;
}

// The dots of a page are packed in place as it is printed: printed once more, it begins with them.
std::string printed_again(const Page& page, const std::string& graphic) {
    Bytes dots = dots_of(page, graphic);
    const Bytes packed =
        reference::grayToMono(static_cast<int>(page.width), static_cast<int>(page.height), 0, dots);
    std::copy(packed.begin(), packed.end(), dots.begin());
    return graphic_of(page, dots);
}

std::size_t count_of_any(const std::string& log, std::initializer_list<const char*> lines) {
    std::size_t count = 0;
    for (const char* line : lines) {
        count += lines_with(log, line).size();
    }
    return count;
}

// Messages of which each stands for a page that is not printed.
std::size_t missing_pages(const std::string& log) {
    return count_of_any(log, {"ERROR:printImage: Memory allocation failed, unable to process image,"
                              " exiting processing",
                              "ERROR:printImage: Memory allocation for processing result failed, "
                              "unable to continue processing",
                              "ERROR:printImage: pimage is NULL, unable to print the image"});
}

constexpr const char* out_of_memory = "ERROR:Out of memory, the job ends here!";

}  // namespace

MemoryOutcome::MemoryOutcome(const FaultJob& job, const SentJob& sent) : sent_(sent) {
    const std::vector<Page> pages = job.pages();
    if (std::string(job.options).find("Tattoo") != std::string::npos) {
        // Page processing leaves the page of before where it cannot load one.
        first_again_ = printed_again(pages[0], sent.pages[0].graphic);
    } else {
        // A halftone that fails is passed over in silence: everything that is not 0 prints.
        for (const Page& page : pages) {
            undithered_.push_back(graphic_of(page, toned(job, page)));
        }
    }
    ends_.push_back({});
    add_ends({.output = sent.preamble, .before_page = true}, 0);
}

void MemoryOutcome::add_ends(const End& so_far, std::size_t page) {
    ends_.push_back(so_far);
    if (page == sent_.pages.size()) {
        ends_.back().complete = true;
        return;
    }
    End end = so_far;
    end.output += sent_.pages[page].setup;
    end.before_page = false;
    ends_.push_back(end);
    end.before_page = true;
    const auto add = [&](const std::string& graphic, std::size_t missing, std::size_t stale) {
        End next = end;
        next.output += graphic;
        next.missing += missing;
        next.stale += stale;
        add_ends(next, page + 1);
    };
    add(sent_.pages[page].graphic, 0, 0);
    add("", 1, 0);
    if (!undithered_.empty()) {
        add(undithered_[page], 0, 0);
    }
    if (page > 0 && !first_again_.empty()) {
        add(first_again_, 0, 1);
    }
}

std::string MemoryOutcome::fault_in(const ProcessResult& result, const MemoryReport& report) const {
    const std::string filter = filter_program().filename();
    if (!result.exit_status) {
        // libcups uses some of its memory without having looked whether it got it. It gives up in
        // its settings and where it opens the raster, before anything of a page is sent.
        const bool in_library = report.last_asked_by && *report.last_asked_by != filter &&
                                sent_.preamble.starts_with(result.output);
        return result.timed_out || !in_library ? result.ending() : "";
    }
    return report.asked_by.value_or(filter) == filter ? fault_of_filter(result)
                                                      : fault_of_library(result);
}

std::string MemoryOutcome::fault_of_filter(const ProcessResult& result) const {
    const bool ended_early = *result.exit_status == 1;
    const bool said_so = count_of_any(result.error, {out_of_memory}) == 1;
    const std::size_t missing = missing_pages(result.error);
    const std::size_t unloaded = lines_with(result.error, "CRIT:").size();
    for (const End& end : ends_) {
        if (end.output != result.output || end.missing != missing || end.stale > unloaded) {
            continue;
        }
        // That the page buffer cannot be grown has no message.
        if (ended_early ? said_so || (end.before_page && !end.complete)
                        : *result.exit_status == 0 && end.complete && !said_so) {
            return {};
        }
    }
    return result.ending() + " with this output:\n" + result.output;
}

std::string MemoryOutcome::fault_of_library(const ProcessResult& result) const {
    if (fault_of_filter(result).empty()) {
        return {};
    }
    if (*result.exit_status == 1) {
        return lines_with(result.error, "ERROR:").empty() ? "status 1 without a message" : "";
    }
    // Only libcups knows of an option or a setting that it has lost: the job is printed without.
    const bool whole_pages =
        result.output.starts_with(sent_.preamble) && result.output.ends_with("^XZ\r\n") &&
        count_of(result.output, "~DGR:") + missing_pages(result.error) == sent_.pages.size();
    return *result.exit_status == 0 && whole_pages
               ? ""
               : result.ending() + " with this output:\n" + result.output;
}

}  // namespace kelp_test
