#include "tests/reference/job/log.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace reference {

namespace {

const char* const kLevels[6] = {"DEBUG:", "DEBUG:", "WARN:", "ERROR:", "CRIT:", "INVALID:"};

const char* const kHalftones[10] = {"None",   "FloydSteinberg",    "Ordered", "Burkes",
                                    "Stucki", "JarvisJudiceNinke", "Sierra",  "StevensonArce",
                                    "Tattoo", "Tattoo_X8"};

}  // namespace

void logLine(int level, const char* format, ...) {
    fprintf(stderr, "%s", kLevels[level]);
    va_list arguments;
    va_start(arguments, format);
    vfprintf(stderr, format, arguments);
    va_end(arguments);
    fprintf(stderr, "\n");
}

const char* basenameOf(const char* path) {
    if (path == nullptr)
        return nullptr;
    const char* name = path;
    for (const char* p = path; *p != 0; p++)
        if (*p == '/' || *p == '\\')
            name = p + 1;
    return name;
}

void copyText(char* destination, const char* source, unsigned long length) {
    unsigned long i = 0;
    while (i < length && source[i] != 0) {
        destination[i] = source[i];
        i++;
    }
    while (i < length) {
        destination[i] = 0;
        i++;
    }
    destination[length - 1] = 0;
}

int halftoneFromName(const char* name) {
    for (int i = 0; i < 10; i++)
        if (strcmp(name, kHalftones[i]) == 0)
            return i;
    return 0;
}

}  // namespace reference
