# IBM Z: big-endian, char is unsigned, there is a fused multiply-add.
set(KELP_TRIPLET s390x-linux-gnu)
set(KELP_EMULATOR qemu-s390x)
set(CMAKE_SYSTEM_PROCESSOR s390x)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
