# What the tool chains for other processors have in common: the distribution's cross compiler and C library, other
# libraries as scripts/platform_packages.sh unpacks them, and the emulator before every program that is run.
# emulated(PROCESSOR TRIPLET EMULATOR): a macro, since a tool chain's settings are variables of the project.
macro(emulated processor triplet emulator)
    set(CMAKE_SYSTEM_NAME Linux)
    set(CMAKE_SYSTEM_PROCESSOR ${processor})
    set(CMAKE_CXX_COMPILER ${triplet}-g++)
    # The C library that programs start with lies where the cross compiler's packages have it.
    set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator} -L /usr/${triplet})

    # Libraries come from the packages of that architecture and from CMAKE_PREFIX_PATH, never from this machine.
    cmake_path(SET CMAKE_FIND_ROOT_PATH NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/platforms/${processor}/sysroot)
    list(PREPEND CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH})
    set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
    set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
    set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
endmacro()
