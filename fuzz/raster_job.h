#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kelp_fuzz {

// What a plan changes in a header; 0 is nothing.
enum class ChangedField : std::uint8_t {
    width = 1,
    height,
    bytes_per_line,
    bits_per_pixel,
    resolution_x,
    resolution_y,
    copies,
    color_space,
    page_size_name,
    unended_name,
};

// How inputs of the targets that read raster are laid out: a plan, then an uncompressed stream in
// this machine's byte order, sync word first, that the plan packs, swaps or cuts. A stream that is
// none is taken as it is.
struct RasterJob {
    static constexpr std::size_t plan_size = 32;

    enum Form { as_it_is, packed, swapped, portable, forms };

    // Bytes of the plan: the first are used here, the rest is the target's.
    enum Plan : std::size_t {
        form,              // one of Form
        cut,               // two bytes: 0 for the whole stream, else where it ends
        change = cut + 2,  // a ChangedField, changed behind libcups' back, see raster_reads.h
        change_value,      // four bytes
        change_page = change_value + 4,
        short_page,  // 0, or how many pixels of a page libcups claims to have read
        own,         // of the target
    };

    RasterJob(const std::uint8_t* data, std::size_t size);

    std::uint8_t byte(std::size_t place) const { return plan[place]; }
    std::uint32_t number(std::size_t place, std::size_t bytes) const;
    // As the program under test gets it.
    std::string stream() const;
    // Whether that certainly ends within a page or its header.
    bool ends_early() const;

    std::array<std::uint8_t, plan_size> plan{};
    std::string source;
};

// A custom mutator for such inputs: changes the plan, or takes the stream apart and changes fields
// of headers, sizes with their pixels, pixels and the order of pages, or any bytes.
std::size_t mutate_raster_job(std::uint8_t* data, std::size_t size, std::size_t max_size,
                              unsigned seed);

}  // namespace kelp_fuzz
