# 64-bit ARM, as on a Raspberry Pi: char is unsigned, there is a fused multiply-add.
set(KELP_TRIPLET aarch64-linux-gnu)
set(KELP_EMULATOR qemu-aarch64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
