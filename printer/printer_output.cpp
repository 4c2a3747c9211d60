#include <cstdarg>
#include <string>
#include <string_view>

#include "printer/kelp_printer.h"

void KelpPrinter::printBytes(const void* buffer, std::size_t size) {
    for (std::FILE* stream : outputStreams_) {
        std::fwrite(buffer, 1, size, stream);
    }
}

void KelpPrinter::printStr(const char* text) {
    for (std::FILE* stream : outputStreams_) {
        std::fputs(text, stream);
    }
}

void KelpPrinter::printByte(int byte) {
    for (std::FILE* stream : outputStreams_) {
        std::fputc(byte & 0xFF, stream);
    }
}

int KelpPrinter::printFormat(const char* format, ...) {
    int written = 0;
    for (std::FILE* stream : outputStreams_) {
        // Started anew for each stream: a print uses its argument list up.
        va_list arguments;
        va_start(arguments, format);
        written = std::vfprintf(stream, format, arguments);
        va_end(arguments);
    }
    return written;
}

const char* KelpPrinter::getCopyRight() {
    static const std::string banner = [] {
        constexpr std::string_view text = "Kelp printer driver for ZPL thermal printers";
        constexpr char digits[] = "0123456789ABCDEF";
        std::string hex = "MFT:";
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            if (i > 0) {
                hex += ' ';
            }
            hex += digits[byte >> 4];
            hex += digits[byte & 0x0F];
        }
        return hex;
    }();
    return banner.c_str();
}
