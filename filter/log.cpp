#include "filter/log.h"

#include <cstdarg>
#include <cstdio>

void kelpLogCommon(int level, const char* format, ...) {
    static const char* const sLogLevelTexts[] = {
        "DEBUG:", "DEBUG:", "WARN:", "ERROR:", "CRIT:", "INVALID:"};
    std::fprintf(stderr, "%s", sLogLevelTexts[level]);
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fprintf(stderr, "\n");
}
