#include "printer/zpl_printer.h"

#include <cstddef>
#include <string>

#include "printer/zpl_encoding.h"

std::int32_t LastSet = 0;

namespace {

/// Rows are sent in pieces of about this many characters: few large writes.
constexpr std::size_t kPiece = 65536;

/// Appends what ZPLPrintLine sends.
void appendRow(std::string& text, const unsigned char* row, std::size_t rowBytes) {
    if (LastSet != 0 && zplIsSolidRow(row, rowBytes)) {
        text += ':';
        return;
    }
    zplAppendRow(text, row, rowBytes);
    LastSet = 1;
}

}  // namespace

void setPrint(int /*unused*/, int copies) {
    sPrinter->printFormat("^PQ%d\n", copies);
}

void ZplPrinter::doPrintImage(const unsigned char* bits, unsigned long /*bytesPerLine*/,
                              unsigned long height, unsigned long width) {
    // A printer that is promised a graphic takes whatever comes for it: without the memory for its
    // rows it is not begun.
    std::string text;
    text.reserve(kPiece + zplRowRoom((width + 7) / 8));
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
        appendRow(text, packed + y * rowBytes, rowBytes);
        if (text.size() >= kPiece || y + 1 == height) {
            printBytes(text.data(), text.size());
            text.clear();
        }
    }
    printStr("^FO0,0^XGR:CUPS.GRF,1,1^FS\n");
    printStr("^XZ\r\n");
}

void ZplPrinter::ZPLPrintLine(const unsigned char* row, int bytesPerRow) {
    std::string text;
    appendRow(text, row, static_cast<std::size_t>(bytesPerRow));
    printBytes(text.data(), text.size());
}

void ZplPrinter::ZPLCompress(unsigned char ch, unsigned int count) {
    std::string text;
    zplAppendRun(text, static_cast<char>(ch), count);
    printBytes(text.data(), text.size());
}
