#ifndef KELP_FILTER_TEXT_H
#define KELP_FILTER_TEXT_H

/// The part of a path behind its last '/' or '\', whichever comes later; the whole path when it
/// has neither. A pointer into the argument; null for null.
const char* kelpPathGetBasename(const char* path);

/// The whole number that a text begins with, 0 where it begins with none. One that is too large for
/// an int gives its low 32 bits and one too large for 64 bits those of the largest or smallest:
/// what atoi does where a long has 64 bits. Where it has 32, atoi gives another number.
int kelpTextToInt(const char* text);

/// Copies at most len - 1 characters and ends the destination with a zero; the rest of the
/// destination is filled with zeros.
/// @param len size of the destination in bytes, at least 1
/// @return the destination
char* kelpStrCpy(char* destination, const char* source, unsigned long len);

#endif
