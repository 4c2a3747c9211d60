#pragma once

// The diagnostic log: level prefix, message, newline, on standard error.

namespace reference {

__attribute__((format(printf, 2, 3))) void logLine(int level, const char* format, ...);

// Behind the last slash or backslash of a path.
const char* basenameOf(const char* path);

// At most length - 1 characters, the rest of the destination zero.
void copyText(char* destination, const char* source, unsigned long length);

// 0 for a name that is not in the table.
int halftoneFromName(const char* name);

}  // namespace reference
