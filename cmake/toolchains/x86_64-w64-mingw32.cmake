# Windows on x86-64, built by mingw-w64's g++ with POSIX threads. What is built runs under wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)  # for the dependencies
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Headers and libraries are this system's own and those of CMAKE_PREFIX_PATH; programs are those of the machine that
# builds.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Joined sources of tests have more sections than the older form of object files can number.
set(CMAKE_CXX_FLAGS_INIT -Wa,-mbig-obj)
# Programs start wherever they are copied to, without the compiler's libraries beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# Wine has a folder of its own for what it installs and the registry, opens no window, and asks for nothing.
find_program(QELMODELS_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(QELMODELS_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR
        env --unset=DISPLAY --unset=WAYLAND_DISPLAY WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEARCH=win64 WINEDEBUG=-all
        WINEDLLOVERRIDES=mscoree,mshtml,winemenubuilder.exe,winedbg.exe= ${QELMODELS_WINE})
endif()
