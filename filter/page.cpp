#include "filter/page.h"

#include "filter/job_setup.h"
#include "filter/log.h"
#include "filter/page_header.h"
#include "filter/units.h"
#include "printer/zpl_printer.h"

namespace {

constexpr int kPreambleLineFeeds = 64;

float millimetres(unsigned int dots, unsigned int dotsPerInch) {
    return static_cast<float>(static_cast<double>(dots) * kMillimetresPerInch /
                              static_cast<double>(dotsPerInch));
}

void configurePrinter(KelpPrinter& printer, const Settings& settings,
                      const cups_page_header2_t& header) {
    printer.setPageHeader(&header)
        .setBrightness(settings.Brightness)
        .setHalftoneType(settings.halftoneType)
        .setMirrorPrint(settings.MirrorImage != 0)
        .setNegativePrint(settings.NegativeImage != 0);
}

}  // namespace

void startPages(KelpPrinter& printer) {
    for (int i = 0; i < kPreambleLineFeeds; ++i) {
        printer.printByte('\n');
    }
}

void setUpPage(Settings& settings, KelpPrinter& printer, const cups_page_header2_t& header,
               int page) {
    settings.pageWidth = millimetres(header.cupsWidth, header.HWResolution[0]);
    settings.pageHeight = millimetres(header.cupsHeight, header.HWResolution[1]);
    kelpLogCommon(0, "pageWidth: %f,pageHeight: %f", static_cast<double>(settings.pageWidth),
                  static_cast<double>(settings.pageHeight));
    jobSetup(settings);
    configurePrinter(printer, settings, header);
    setCls();
    logPageHeader(header, page);
}

void printPixels(KelpPrinter& printer, const cups_page_header2_t& header, unsigned char* pixels) {
    LastSet = 0;
    printer.printImage(pixels, header.cupsBytesPerLine, header.cupsHeight, header.cupsWidth);
}
