#include "tests/process/expected.h"

#include <sstream>

#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

constexpr std::string_view hexadecimal_digits = "0123456789abcdef";

// `size` bytes, least significant first.
std::string little_endian(unsigned value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
    return bytes;
}

}  // namespace

std::string preamble() {
    return std::string(64, '\n');
}

std::string SetupBlock::text() const {
    std::string block = "SIZE " + size + "\r\n^XX\r\n^PW" + std::to_string(width) + "\r\n^LL" +
                        std::to_string(length) + "\r\n";
    for (const std::string& command : commands) {
        block += command + "\r\n";
    }
    return block + "^XZ\r\n\r\n";
}

std::string Graphic::text() const {
    return "^XX\r\n^PQ" + std::to_string(copies) + "\n~DGR:CUPS.GRF," + std::to_string(total) +
           "," + std::to_string(row_bytes) + ",\n" + rows + "^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n";
}

Page tiny_page() {
    Page page;
    page.pixels = drawn(
        "################"
        "####............");
    return page;
}

std::string tiny_page_output() {
    return SetupBlock().text() + Graphic().text();
}

std::string bitmap(unsigned width, unsigned height, const std::string& pixels) {
    const unsigned data_offset = 14 + 40 + 256 * 4;
    const unsigned image_size = (width + 3) / 4 * 4 * height;
    std::string file = "BM" + little_endian(data_offset + image_size, 4) + little_endian(0, 4) +
                       little_endian(data_offset, 4);
    file += little_endian(40, 4) + little_endian(width, 4) + little_endian(height, 4) +
            little_endian(1, 2) + little_endian(8, 2) + little_endian(0, 4) +
            little_endian(image_size, 4) + little_endian(0, 4) + little_endian(0, 4) +
            little_endian(256, 4) + little_endian(256, 4);
    for (unsigned level = 0; level < 256; ++level) {
        file += little_endian(level * 0x010101, 4);
    }
    return file + pixels;
}

std::string digits_behind(const std::string& log, std::string_view text) {
    const std::size_t at = log.find(text);
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t begin = at + text.size();
    return log.substr(begin, log.find_first_not_of(hexadecimal_digits, begin) - begin);
}

std::string without_addresses(std::string log) {
    for (const std::string_view text : {adjusted_address, freed_address}) {
        for (std::size_t at = 0; (at = log.find(text, at)) != std::string::npos;) {
            at += text.size();
            const std::size_t end = log.find_first_not_of(hexadecimal_digits, at);
            if (end != at) {
                log.replace(at, end - at, "<address>");
            }
        }
    }
    return log;
}

std::vector<std::string> lines_with(const std::string& log, std::string_view prefix) {
    std::vector<std::string> lines;
    std::istringstream stream(log);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(prefix)) {
            lines.push_back(line);
        }
    }
    return lines;
}

bool contains(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

}  // namespace kelp_test
