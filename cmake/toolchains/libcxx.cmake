# clang and libc++ of version QELMODELS_LIBCXX, below build/platforms/libcxx-<version> (`./dev test --preset libcxx-19` lays
# it there): the packages of two versions cannot be installed side by side. Programs are linked with its static
# libraries, so that they need nothing when they run.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QELMODELS_LIBCXX)
cmake_path(SET root NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/platforms/libcxx-${QELMODELS_LIBCXX})
set(llvm ${root}/usr/lib/llvm-${QELMODELS_LIBCXX})

set(CMAKE_C_COMPILER clang-${QELMODELS_LIBCXX})
set(CMAKE_CXX_COMPILER clang++-${QELMODELS_LIBCXX})
set(CMAKE_CXX_FLAGS_INIT "-stdlib++-isystem ${llvm}/include/c++/v1 -isystem ${llvm}/include")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -nostdlib++)
endforeach()
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "${llvm}/lib/libc++.a ${llvm}/lib/libc++abi.a")
list(PREPEND CMAKE_PREFIX_PATH ${root}/dependencies)

# What is checked at run time beside our own assertions has another name in each version.
if(QELMODELS_LIBCXX VERSION_LESS 15)
    string(APPEND CMAKE_CXX_FLAGS_INIT " -D_LIBCPP_DEBUG=0")
elseif(QELMODELS_LIBCXX VERSION_LESS 18)
    string(APPEND CMAKE_CXX_FLAGS_INIT " -D_LIBCPP_ENABLE_ASSERTIONS=1")
else()
    string(APPEND CMAKE_CXX_FLAGS_INIT " -D_LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_EXTENSIVE")
endif()
