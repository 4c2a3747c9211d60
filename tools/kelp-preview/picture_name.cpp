#include "tools/kelp-preview/picture_name.h"

#include <cstddef>

std::string pictureName(const std::string& given, std::uint64_t number, bool onlyOne) {
    if (onlyOne) {
        return given;
    }
    const std::size_t folderEnd = given.rfind('/');
    const std::size_t nameBegin = folderEnd == std::string::npos ? 0 : folderEnd + 1;
    std::size_t dot = given.rfind('.');
    if (dot == std::string::npos || dot <= nameBegin) {
        dot = given.size();
    }
    return given.substr(0, dot) + "-" + std::to_string(number) + given.substr(dot);
}
