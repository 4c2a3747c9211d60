#include "filter/text.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

const char* kelpPathGetBasename(const char* path) {
    if (path == nullptr) {
        return nullptr;
    }
    const char* basename = path;
    for (const char* c = path; *c != '\0'; ++c) {
        if (*c == '/' || *c == '\\') {
            basename = c + 1;
        }
    }
    return basename;
}

int kelpTextToInt(const char* text) {
    return static_cast<int>(std::strtoll(text, nullptr, 10));
}

char* kelpStrCpy(char* destination, const char* source, unsigned long len) {
    std::fill_n(destination, len, '\0');
    std::memcpy(destination, source, strnlen(source, len - 1));
    return destination;
}
