#include "printer/mono_packing.h"

#include "filter/log.h"
#include "image/dot_packing.h"
#include "printer/kelp_printer.h"

void packMonoRow(const unsigned char* dots, std::size_t count, unsigned char* packed) {
    packDots(dots, count, {0, 0, 0, 0}, packed);
}

int KelpPrinter::GrayToMono(int width, int height, unsigned char* data) const {
    const auto rowDots = static_cast<unsigned long>(width);
    const unsigned long skip = skipRightPixels_;
    const unsigned long kept = skip != 0 && skip < rowDots ? rowDots - skip : rowDots;
    kelpLogCommon(0, "GrayToMono, bpl(%d), h(%d), skipPixels(%d), wb(%d)", width, height,
                  static_cast<int>(skip), static_cast<int>(kept));
    unsigned char* packed = data;
    for (int y = 0; y < height; ++y) {
        packMonoRow(data + static_cast<unsigned long>(y) * rowDots, kept, packed);
        packed += (kept + 7) / 8;
    }
    return static_cast<int>(packed - data);
}
