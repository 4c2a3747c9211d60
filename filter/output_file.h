#ifndef KELP_FILTER_OUTPUT_FILE_H
#define KELP_FILTER_OUTPUT_FILE_H

#include <cstdio>
#include <memory>

/// Closes a stream; the deleter of a unique owner.
struct CFileCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using OwnedFile = std::unique_ptr<std::FILE, CFileCloser>;

/// Opens a file for writing from its start, emptied or made anew.
///
/// The filter runs in the spooler's service and writes to names that others can guess. So nothing
/// but a regular file with this one name is opened: a symbolic link is not followed, a FIFO or
/// device not waited for, a second hard link not written through. Null, with errno set, instead.
/// @param mode as fopen takes it: "w", "w+" or "wb+"
OwnedFile openOutputFile(const char* path, const char* mode);

#endif
