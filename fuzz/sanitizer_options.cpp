// libcups takes zeroed memory for a row of as many bytes as a header names, up to 4 GiB, before
// anybody can look at the header, and ends the stream where it gets none. Such an input is no fault
// of ours, and takes a second where the memory is given. Whoever asks for as much by operator new
// ends the program all the same.

extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=64";
}
