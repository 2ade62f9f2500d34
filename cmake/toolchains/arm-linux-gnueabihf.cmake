# 32-bit ARM with the floating-point unit.
include(${CMAKE_CURRENT_LIST_DIR}/emulated.cmake)
emulated(armhf arm-linux-gnueabihf qemu-arm)
