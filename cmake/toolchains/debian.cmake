# What the toolchain files of this folder share: Debian's cross compiler for KELP_TRIPLET, programs
# that run under KELP_EMULATOR, and the machine's libraries in the folder KELP_SYSROOT, where
# scripts/cross unpacks them.

set(KELP_SYSROOT "" CACHE PATH "Where the packages of the machine are unpacked")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KELP_SYSROOT)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${KELP_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${KELP_TRIPLET}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${KELP_TRIPLET})

# The C and C++ libraries come with the compiler; all others are the machine's, and nothing but
# programs is the host's.
set(CMAKE_FIND_ROOT_PATH "${KELP_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What libcups itself is linked with is found when the program runs. It may also be of a later
# release than the compiler's C library.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,--allow-shlib-undefined")

set(CMAKE_CROSSCOMPILING_EMULATOR "${KELP_EMULATOR};-L;${KELP_SYSROOT}")
