#include "printer/zpl_encoding.h"

#include <algorithm>

void zplAppendRun(std::string& out, char ch, unsigned int count) {
    if (count > 1) {
        for (; count >= 400; count -= 400) {
            out += 'z';
        }
        if (count >= 20) {
            out += static_cast<char>('f' + count / 20);
            count %= 20;
        }
        if (count > 0) {
            out += static_cast<char>('F' + count);
        }
    }
    out += ch;
}

void zplAppendRow(std::string& out, const unsigned char* row, std::size_t rowBytes) {
    static constexpr char hex[] = "0123456789ABCDEF";
    if (rowBytes == 0) {
        return;
    }
    const auto digit = [row](std::size_t i) {
        const unsigned byte = row[i / 2];
        return hex[i % 2 == 0 ? byte >> 4 : byte & 0x0F];
    };
    char current = digit(0);
    unsigned int count = 1;
    for (std::size_t i = 1; i < 2 * rowBytes; ++i) {
        const char next = digit(i);
        if (next == current) {
            ++count;
        } else {
            zplAppendRun(out, current, count);
            current = next;
            count = 1;
        }
    }
    if (current != '0') {
        // A row that ends in ones is written out: '!' is not used.
        zplAppendRun(out, current, count);
        return;
    }
    if (count % 2 != 0) {
        out += '0';
        --count;
    }
    if (count > 0) {
        out += ',';
    }
}

bool zplIsSolidRow(const unsigned char* row, std::size_t rowBytes) {
    return std::all_of(row, row + rowBytes, [](unsigned char byte) { return byte == 0xFF; });
}
