#include "printer/kelp_printer.h"

#include <algorithm>

#include "filter/text.h"

KelpPrinter* sPrinter = nullptr;

KelpPrinter::KelpPrinter() : outputStreams_{stdout} {
    setSnapshotTemplate("/var/spool/cups/tmp/prnimg_%d-%d-%d_%d_%d_%d_%ld.bmp");
}

KelpPrinter& KelpPrinter::setBrightness(int percent) {
    brightness_ = std::clamp(percent, -100, 100);
    return *this;
}

KelpPrinter& KelpPrinter::setContrast(int percent) {
    contrast_ = std::clamp(percent, -100, 100);
    return *this;
}

KelpPrinter& KelpPrinter::setPrintSpeed(const char* text) {
    printSpeed_ = std::clamp(kelpTextToInt(text), 1, 15);
    return *this;
}

KelpPrinter& KelpPrinter::setPrintDensity(int density) {
    printDensity_ = std::clamp(density, 0, 15);
    return *this;
}

KelpPrinter& KelpPrinter::setHalftoneType(DitherType type) {
    halftoneType_ = type;
    return *this;
}

KelpPrinter& KelpPrinter::setNegativePrint(bool on) {
    negativePrint_ = on;
    return *this;
}

KelpPrinter& KelpPrinter::setMirrorPrint(bool on) {
    mirrorPrint_ = on;
    return *this;
}

KelpPrinter& KelpPrinter::setRotate180Print(bool on) {
    rotate180Print_ = on;
    return *this;
}

KelpPrinter& KelpPrinter::setUseTQDithering(bool on) {
    useTQDithering_ = on;
    return *this;
}

KelpPrinter& KelpPrinter::setRemoveBlankEdges(std::uint8_t flags) {
    removeBlankEdges_ = flags;
    return *this;
}

KelpPrinter& KelpPrinter::setAntiWrinkle(std::uint32_t level) {
    antiWrinkle_ = level;
    return *this;
}

KelpPrinter& KelpPrinter::setMaxMediaWidth(std::uint32_t dots) {
    maxMediaWidth_ = dots;
    return *this;
}

KelpPrinter& KelpPrinter::setVBarcodeOpt(std::uint32_t value) {
    vBarcodeOpt_ = value;
    return *this;
}

KelpPrinter& KelpPrinter::SetPrintWidth(unsigned long dots) {
    printWidth_ = dots;
    return *this;
}

KelpPrinter& KelpPrinter::setSkipRightPixels(unsigned long dots) {
    skipRightPixels_ = dots;
    return *this;
}

KelpPrinter& KelpPrinter::setUserData(std::uintptr_t value) {
    userData_ = value;
    return *this;
}

KelpPrinter& KelpPrinter::setPageHeader(const cups_page_header2_t* header) {
    pageHdr_ = header;
    return *this;
}
