#ifndef KELP_FILTER_MEMORY_CHECKED_H
#define KELP_FILTER_MEMORY_CHECKED_H

#include <cerrno>
#include <new>

/// Calls something of libcups, and gives what that gives: an owner, a pointer or a count.
///
/// Throws std::bad_alloc for a null or 0 that comes of want of memory: libcups gives the same at
/// the end of a stream, and only errno tells them apart.
template <typename Call>
auto memoryChecked(const Call& call) {
    errno = 0;
    auto result = call();
    if (!result && errno == ENOMEM) {
        throw std::bad_alloc();
    }
    return result;
}

#endif
