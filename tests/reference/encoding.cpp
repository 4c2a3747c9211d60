#include "tests/reference/encoding.h"

namespace reference {

int keptPixels(int width, unsigned long skip) {
    if (skip != 0 && skip < static_cast<unsigned long>(width))
        return width - static_cast<int>(skip);
    return width;
}

std::vector<unsigned char> grayToMono(int width, int height, unsigned long skip,
                                      const std::vector<unsigned char>& data) {
    const int wb = keptPixels(width, skip);
    std::vector<unsigned char> packed;
    for (long r = 0; r < height; r++) {
        int byte = 0;
        for (long x = 0; x < wb; x++) {
            if (data[static_cast<std::size_t>(r * width + x)] != 0)
                byte |= 1 << (7 - x % 8);
            if (x % 8 == 7) {
                packed.push_back(static_cast<unsigned char>(byte));
                byte = 0;
            }
        }
        if (wb % 8 != 0)
            packed.push_back(static_cast<unsigned char>(byte));
    }
    return packed;
}

std::string encodeRun(char digit, unsigned count) {
    std::string out;
    if (count > 1) {
        while (count >= 400) {
            out += 'z';
            count -= 400;
        }
        if (count >= 20) {
            out += static_cast<char>(102 + count / 20);
            count = count % 20;
        }
        if (count > 0)
            out += static_cast<char>(70 + count);
    }
    out += digit;
    return out;
}

std::string encodeRow(const std::vector<unsigned char>& row, int& lastSet) {
    bool solid = true;
    for (unsigned char byte : row)
        if (byte != 0xFF)
            solid = false;
    if (lastSet != 0 && solid)
        return ":";

    std::string hex;
    for (unsigned char byte : row) {
        hex += "0123456789ABCDEF"[byte / 16];
        hex += "0123456789ABCDEF"[byte % 16];
    }

    std::string out;
    char cur = hex[0];
    unsigned count = 1;
    for (std::size_t i = 1; i < hex.size(); i++) {
        if (hex[i] == cur) {
            count++;
        } else {
            out += encodeRun(cur, count);
            cur = hex[i];
            count = 1;
        }
    }
    if (cur == '0') {
        if (count % 2 == 1) {
            out += '0';
            count--;
        }
        if (count > 0)
            out += ',';
    } else {
        out += encodeRun(cur, count);
    }
    lastSet = 1;
    return out;
}

std::string encodeLabel(int width, int height, unsigned long skip, int copies,
                        const std::vector<unsigned char>& data, int& lastSet) {
    std::vector<unsigned char> packed = grayToMono(width, height, skip, data);
    const std::size_t total = packed.size();
    const std::size_t rowBytes = total / static_cast<std::size_t>(height);

    std::string out = "^XX\r\n";
    out += "^PQ" + std::to_string(copies) + "\n";
    out += "~DGR:CUPS.GRF," + std::to_string(total) + "," + std::to_string(rowBytes) + ",\n";
    for (std::size_t r = 0; r < static_cast<std::size_t>(height); r++) {
        std::vector<unsigned char> row;
        for (std::size_t i = 0; i < rowBytes; i++)
            row.push_back(packed[r * rowBytes + i]);
        out += encodeRow(row, lastSet);
    }
    out += "^FO0,0^XGR:CUPS.GRF,1,1^FS\n";
    out += "^XZ\r\n";
    return out;
}

}  // namespace reference
