#include "printer/blank_rows.h"

#include <algorithm>

namespace {

bool isBlank(const unsigned char* row, unsigned long rowBytes, unsigned long skip) {
    const unsigned long examined = skip > rowBytes ? rowBytes : rowBytes - skip;
    return std::all_of(row, row + examined, [](unsigned char byte) { return byte == 0; });
}

}  // namespace

unsigned long kelpImageCountBlankLinesFromFront(const unsigned char* data, unsigned long rowBytes,
                                                unsigned long height, unsigned long skip,
                                                unsigned long stride) {
    for (unsigned long r = 0; r + 1 < height; ++r) {
        if (!isBlank(data + (r + 1) * stride, rowBytes, skip)) {
            return r;
        }
    }
    return height;
}

unsigned long kelpImageCountBlankLinesFromBack(const unsigned char* data, unsigned long rowBytes,
                                               unsigned long height, unsigned long skip,
                                               unsigned long stride) {
    for (unsigned long r = height; r > 0; --r) {
        if (!isBlank(data + (r - 1) * stride, rowBytes, skip)) {
            return r;
        }
    }
    return 0;
}
