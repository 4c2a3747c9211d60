// A program of nothing but what tests/CMakeLists.txt compiles once for all of them.
