#include "printer/zpl_printer.h"

#include <cstddef>
#include <string>

#include "printer/zpl_encoding.h"

std::int32_t LastSet = 0;

namespace {

/// What ZPLPrintLine does; `text` is room that is used again for each row.
void printRow(KelpPrinter& printer, const unsigned char* row, std::size_t rowBytes,
              std::string& text) {
    if (LastSet != 0 && zplIsSolidRow(row, rowBytes)) {
        printer.printByte(':');
        return;
    }
    text.clear();
    zplAppendRow(text, row, rowBytes);
    printer.printBytes(text.data(), text.size());
    LastSet = 1;
}

}  // namespace

void setPrint(int /*unused*/, int copies) {
    sPrinter->printFormat("^PQ%d\n", copies);
}

void ZplPrinter::doPrintImage(const unsigned char* bits, unsigned long /*bytesPerLine*/,
                              unsigned long height, unsigned long width) {
    // A printer that is promised a graphic takes whatever comes for it: without the memory for its
    // rows it is not begun. A row takes a character a digit at most.
    std::string text;
    text.reserve(2 * ((width + 7) / 8));
    // "^XX" starts no label in ZPL; printers of this kind expect it here.
    printStr("^XX\r\n");
    const cups_page_header2_t* header = getPageHeader();
    setPrint(1, header != nullptr ? static_cast<int>(header->NumCopies) : 1);

    // The rows are taken `width` bytes apart, whatever the image's row padding is: a width that is
    // no multiple of 4 prints sheared.
    auto* packed = const_cast<unsigned char*>(bits);
    const auto total = static_cast<unsigned int>(
        GrayToMono(static_cast<int>(width), static_cast<int>(height), packed));
    const unsigned int rowBytes = total / static_cast<unsigned int>(height);
    printFormat("~DGR:CUPS.GRF,%u,%u,\n", total, rowBytes);
    for (unsigned long y = 0; y < height; ++y) {
        printRow(*this, packed + y * rowBytes, rowBytes, text);
    }
    printStr("^FO0,0^XGR:CUPS.GRF,1,1^FS\n");
    printStr("^XZ\r\n");
}

void ZplPrinter::ZPLPrintLine(const unsigned char* row, int bytesPerRow) {
    std::string text;
    printRow(*this, row, static_cast<std::size_t>(bytesPerRow), text);
}

void ZplPrinter::ZPLCompress(unsigned char ch, unsigned int count) {
    std::string text;
    zplAppendRun(text, static_cast<char>(ch), count);
    printBytes(text.data(), text.size());
}
