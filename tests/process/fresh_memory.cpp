// Prints memory that it got from the allocator and never wrote.

#include <cstdio>
#include <cstdlib>

int main() {
    const std::size_t size = 100;
    // Volatile, so that no compiler knows that nothing was written.
    const char* volatile memory = static_cast<const char*>(std::malloc(size));
    const char* bytes = memory;
    std::fwrite(bytes, 1, size, stdout);
    std::free(const_cast<char*>(bytes));
    return 0;
}
