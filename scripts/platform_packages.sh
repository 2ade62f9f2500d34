# The libraries of platforms that are not this machine's: which packages each needs, and where they are unpacked.
# Sourced by ./dev, after packages.sh, foreign_packages.sh and dependencies.sh.

# unpack_emulated_libraries PROCESSOR: what the library, the command and the tests are linked with on that processor,
# for cmake/toolchains. Packages for all architectures are unpacked, too: nothing is taken from /usr/include.
unpack_emulated_libraries() {
    unpack_packages "build/platforms/$1/sysroot" "$(own_suite)" "${emulated_architectures[$1]}" \
        libsimdjson-dev libsimdjson14 libfast-float-dev libcli11-dev libfmt-dev libfmt9 libgtest-dev librapidcheck-dev
}

declare -A emulated_architectures=([aarch64]=arm64 [armhf]=armhf [s390x]=s390x)

# unpack_simdjson VERSION: simdjson of a later release, for the presets simdjson-VERSION.
unpack_simdjson() {
    unpack_packages "build/platforms/simdjson-$1" "${simdjson_suites[$1]}" "$(dpkg --print-architecture)" libsimdjson-dev
}

declare -A simdjson_suites=([3.12]=trixie [4.6]=sid)

# unpack_libcxx VERSION: libc++ of that version, and what we need compiled for it, for cmake/toolchains/libcxx.cmake.
unpack_libcxx() {
    local root=build/platforms/libcxx-$1
    unpack_packages "$root" own "$(dpkg --print-architecture)" "libc++-$1-dev" "libc++abi-$1-dev" &&
        build_dependencies "$root/dependencies" -DQELMODELS_LIBCXX="$1" \
            -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/libcxx.cmake"
}
