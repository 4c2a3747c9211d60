#pragma once

#include <cups/raster.h>

namespace kelp_test {

// What libcups reads is not all that the filter must be ready for: which headers libcups refuses by
// itself, and whether it hands over a part of a page, differs between its versions. The executable
// is linked so that the libraries under test read their streams through these.

// Changes every header that is read, while it lives.
class ChangedHeader {
  public:
    using Change = void (*)(cups_page_header2_t& header);

    explicit ChangedHeader(Change change);
    ~ChangedHeader();
    ChangedHeader(const ChangedHeader&) = delete;
    ChangedHeader& operator=(const ChangedHeader&) = delete;
};

// Hands over only so many pixels of every page, while it lives.
class ShortPages {
  public:
    explicit ShortPages(unsigned pixels);
    ~ShortPages();
    ShortPages(const ShortPages&) = delete;
    ShortPages& operator=(const ShortPages&) = delete;
};

// libcups has no memory for what it reads from page `page` on (the first is 0), while it lives: for
// its header or for its pixels.
class ReaderWithoutMemory {
  public:
    enum class For { header, pixels };

    ReaderWithoutMemory(int page, For what);
    ~ReaderWithoutMemory();
    ReaderWithoutMemory(const ReaderWithoutMemory&) = delete;
    ReaderWithoutMemory& operator=(const ReaderWithoutMemory&) = delete;
};

}  // namespace kelp_test
