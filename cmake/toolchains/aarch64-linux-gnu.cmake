# 64-bit ARM.
include(${CMAKE_CURRENT_LIST_DIR}/emulated.cmake)
emulated(aarch64 aarch64-linux-gnu qemu-aarch64)
