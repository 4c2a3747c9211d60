#include <cstdio>
#include <ctime>

#include "filter/output_file.h"
#include "printer/bmp.h"
#include "printer/kelp_printer.h"

unsigned long page_index = 0;

void KelpPrinter::setSnapshotTemplate(const char* pattern) {
    std::snprintf(snapshotTemplate_, sizeof snapshotTemplate_, "%s", pattern);
}

KelpPrinter& KelpPrinter::setSnapshots(bool on) {
    snapshots_ = on;
    return *this;
}

void KelpPrinter::saveImage(const unsigned char* data, unsigned long bytesPerLine,
                            unsigned long height, unsigned long width,
                            unsigned short bitsPerPixel) const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char name[sizeof snapshotTemplate_ + 128];
    std::snprintf(name, sizeof name, snapshotTemplate_, local.tm_year + 1900, local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                  static_cast<long>(page_index++));
    const OwnedFile file = openOutputFile(name, "wb+");
    if (!file) {
        std::fprintf(stderr, "KelpPrinter::saveImage: unable to open the file %s\n", name);
        return;
    }
    writeBmp(file.get(), data, bytesPerLine, height, width, bitsPerPixel);
}
