#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace reference {

// Every byte for the printer goes to each stream in turn, standard output first.
struct Output {
    std::vector<FILE*> streams{stdout};

    void bytes(const std::string& data);
    void byte(int value);
    __attribute__((format(printf, 2, 3))) void format(const char* text, ...);
};

// Opens a regular file only, neither through a link nor waiting for a FIFO.
// flags are those of open(), mode that of fdopen(). Null on failure.
FILE* openRegular(const char* path, int flags, const char* mode);

// The lowest free descriptor must never become standard output by accident: a
// closed standard descriptor is occupied by one that cannot be written.
void occupyClosedStandardDescriptors();

}  // namespace reference
