# 64-bit RISC-V: char is unsigned, there is a fused multiply-add.
set(KELP_TRIPLET riscv64-linux-gnu)
set(KELP_EMULATOR qemu-riscv64)
set(CMAKE_SYSTEM_PROCESSOR riscv64)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
