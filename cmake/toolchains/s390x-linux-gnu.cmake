# A big-endian machine of 64 bits.
include(${CMAKE_CURRENT_LIST_DIR}/emulated.cmake)
emulated(s390x s390x-linux-gnu qemu-s390x)
