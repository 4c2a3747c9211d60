#include "filter/log.h"

#include <cstdarg>
#include <cstdio>

namespace {

KelpLogSink logSink = nullptr;

}  // namespace

void kelpSetLogSink(KelpLogSink sink) {
    logSink = sink;
}

void kelpLogCommon(int level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    if (logSink != nullptr) {
        char message[1024];
        std::vsnprintf(message, sizeof message, format, arguments);
        va_end(arguments);
        logSink(level, message);
        return;
    }
    static const char* const sLogLevelTexts[] = {
        "DEBUG:", "DEBUG:", "WARN:", "ERROR:", "CRIT:", "INVALID:"};
    std::fprintf(stderr, "%s", sLogLevelTexts[level]);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fprintf(stderr, "\n");
}
