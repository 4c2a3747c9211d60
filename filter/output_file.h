#ifndef KELP_FILTER_OUTPUT_FILE_H
#define KELP_FILTER_OUTPUT_FILE_H

#include <cstdio>
#include <memory>

/// Closes a stream; the deleter of a unique owner.
struct CFileCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using OwnedFile = std::unique_ptr<std::FILE, CFileCloser>;

/// Makes a file for writing, in the place of one that has its name already.
///
/// The filter runs in the spooler's service and writes to names that others can guess. So only a
/// file that this call makes is ever written to. A regular file with this one name is removed
/// first; for anything else, a link, a second hard link, a FIFO, a device, a directory, the result
/// is null, with errno set, and what is there stays.
/// @param mode as fopen takes it: "w", "w+" or "wb+"
OwnedFile openOutputFile(const char* path, const char* mode);

#endif
