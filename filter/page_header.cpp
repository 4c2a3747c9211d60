#include "filter/page_header.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "filter/log.h"

bool isPrintablePage(const cups_page_header2_t& header) {
    if (header.cupsBytesPerLine < header.cupsWidth) {
        kelpLogCommon(3, "Unsupported cupsBytesPerLine : %u ! Less than cupsWidth : %u !",
                      header.cupsBytesPerLine, header.cupsWidth);
        return false;
    }
    for (int axis = 0; axis < 2; ++axis) {
        if (header.HWResolution[axis] == 0) {
            kelpLogCommon(3, "Unsupported HWResolution[%d] : %u !", axis,
                          header.HWResolution[axis]);
            return false;
        }
    }
    const std::uint64_t bytes = std::uint64_t{header.cupsBytesPerLine} * header.cupsHeight;
    if (bytes > std::numeric_limits<std::int32_t>::max()) {
        kelpLogCommon(3, "Unsupported page size, cupsBytesPerLine : %u, cupsHeight : %u !",
                      header.cupsBytesPerLine, header.cupsHeight);
        return false;
    }
    return true;
}

void logPageHeader(const cups_page_header2_t& header, int page) {
    // Copied as bytes: an enumeration of a damaged header may hold no value of its type.
    const auto log = [](const char* name, const auto& field) {
        int value = 0;
        static_assert(sizeof value == sizeof field);
        std::memcpy(&value, &field, sizeof value);
        kelpLogCommon(0, "header.%s:%d", name, value);
    };
    // These two lines end in a newline of their own and so leave an empty line behind them.
    kelpLogCommon(0, "PAGE: %d %d\n", page, static_cast<int>(header.NumCopies));
    kelpLogCommon(0, "header.HWResolution[0]:%d\n", static_cast<int>(header.HWResolution[0]));
    log("HWResolution[1]", header.HWResolution[1]);
    log("cupsWidth", header.cupsWidth);
    log("cupsHeight", header.cupsHeight);
    log("cupsMediaType", header.cupsMediaType);
    log("cupsBitsPerColor", header.cupsBitsPerColor);
    log("cupsBitsPerPixel", header.cupsBitsPerPixel);
    log("cupsBytesPerLine", header.cupsBytesPerLine);
    log("cupsColorOrder", header.cupsColorOrder);
    log("cupsColorSpace", header.cupsColorSpace);
    log("cupsCompression", header.cupsCompression);
    log("cupsRowCount", header.cupsRowCount);
    log("cupsRowFeed", header.cupsRowFeed);
    log("cupsRowStep", header.cupsRowStep);
}
