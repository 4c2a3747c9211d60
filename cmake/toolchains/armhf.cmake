# 32-bit ARM: char is unsigned, long has 32 bits.
set(KELP_TRIPLET arm-linux-gnueabihf)
set(KELP_EMULATOR qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
