#!/usr/bin/env bash
# How large a program becomes that maps one asset (bench/size): stripped, with all that it needs within it, for each
# platform that can read JSON, or for those alone whose names match a regular expression. Prints a table. The last
# column is what the C and C++ libraries take of it.
#
# usage: platform_sizes.sh [REGEX]
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh
source scripts/foreign_packages.sh
source scripts/platform_packages.sh
source scripts/dependencies.sh

# What compiles for all of them; libc++ is unpacked.
need_packages "${packages_build[@]}" "${packages_emulated[@]}" "${cross_compilers[aarch64]}" "${cross_compilers[armhf]}" \
    "${packages_windows[@]}" clang-14
unpack_libcxx 14

# Only what the program needs.
dependencies=("fast-float bookworm" "simdjson bookworm")

# One a line: the platform, and what CMake is told for it.
platforms=(
    "g++ 12, libstdc++|-DCMAKE_CXX_COMPILER=g++-12"
    "clang 14, libc++ 14|-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/toolchains/libcxx.cmake -DQELMODELS_LIBCXX=14"
    "64-bit ARM|-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/toolchains/aarch64-linux-gnu.cmake"
    "32-bit ARM|-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/toolchains/arm-linux-gnueabihf.cmake"
    "Windows|-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/toolchains/x86_64-w64-mingw32.cmake"
)

# build_program FOLDER CONFIGURATION CMAKE_ARGUMENTS...: prints the sizes of the two programs in kilobytes.
build_program() {
    local folder=$1 configuration=$2
    shift 2
    cmake -G Ninja -S bench/size -B "$folder" -DCMAKE_BUILD_TYPE="$configuration" \
        -DCMAKE_PREFIX_PATH="$PWD/$prefix" "$@" >"$folder.log" 2>&1 &&
        cmake --build "$folder" --parallel "$(nproc)" >>"$folder.log" 2>&1 &&
        ctest --test-dir "$folder" --output-on-failure --no-tests=error >>"$folder.log" 2>&1 ||
        { cat "$folder.log" >&2 && return 1; }
    local program
    for program in one-asset nothing; do
        [[ -e $folder/$program ]] || program+=.exe
        stat -c %s "$folder/$program"
    done
}

echo "| platform | Release | MinSizeRel | the C and C++ libraries |"
echo "|---|--:|--:|--:|"
for platform in "${platforms[@]}"; do
    name=${platform%%|*}
    [[ $name =~ ${1-} ]] || continue
    read -r -a arguments <<<"${platform#*|}"
    folder=build/sizes/${name//[^a-z0-9A-Z]/_}
    prefix=$folder/dependencies
    mkdir -p "$folder"
    build_dependencies "$prefix" "${arguments[@]}"
    mapfile -t release < <(build_program "$folder/release" Release "${arguments[@]}")
    mapfile -t small < <(build_program "$folder/small" MinSizeRel "${arguments[@]}")
    printf '| %s | %d KB | %d KB | %d KB |\n' "$name" $((release[0] / 1024)) $((small[0] / 1024)) $((small[1] / 1024))
done
