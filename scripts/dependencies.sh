# The libraries that the reader, the command and the tests need, compiled for a compiler, a standard library or a
# processor for which the distribution has no packages. Sourced by ./dev and scripts, from the project's folder, after
# scripts/foreign_packages.sh.

# One a line: the library, the release whose sources are taken, and what CMake is told besides what all are told.
dependencies=(
    "fast-float bookworm"
    "cli11 bookworm -DCLI11_BUILD_TESTS=OFF -DCLI11_BUILD_EXAMPLES=OFF -DCLI11_BUILD_DOCS=OFF"
    "fmtlib bookworm -DFMT_TEST=OFF -DFMT_DOC=OFF"
    "simdjson bookworm"
    "googletest bookworm -DBUILD_GMOCK=OFF"
    "rapidcheck trixie -DRC_ENABLE_GTEST=ON"
)

# build_dependencies PREFIX CMAKE_ARGUMENTS...: compiles them all as static libraries and installs them below PREFIX,
# a folder within the project's, which CMake finds them in with -DCMAKE_PREFIX_PATH=PREFIX (an absolute path).
# The arguments say for what: the compiler, its flags, a toolchain file. What was made for the same arguments stays.
#
#   build_dependencies build/platforms/libcxx/dependencies -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/libcxx.cmake" \
#       -DQELMODELS_LIBCXX=14
build_dependencies() {
    local prefix=$PWD/$1
    shift
    # Another recipe, or other arguments: all are made anew.
    local made_for
    made_for=$(printf '%s\n' "$@" && cat scripts/dependencies.sh)
    if [[ "$(cat "$prefix/made-for" 2>/dev/null)" == "$made_for" ]]; then
        return 0
    fi
    rm -rf "$prefix"
    mkdir -p "$prefix/logs"

    local line dependency log
    for line in "${dependencies[@]}"; do
        read -r -a dependency <<<"$line"
        unpack_sources build/sources "${dependency[1]}" "${dependency[0]}" || return 1
        log=$prefix/logs/${dependency[0]}
        build_dependency "$prefix" "${dependency[0]}" "${dependency[@]:2}" "$@" >"$log" 2>&1 || {
            tail -n 30 "$log" >&2
            echo "compiling '${dependency[0]}' failed, see above and $log" >&2
            return 1
        }
    done
    echo "$made_for" >"$prefix/made-for"
}

# build_dependency PREFIX NAME CMAKE_ARGUMENTS...: one of them.
build_dependency() {
    local prefix=$1 name=$2 build=$1/builds/$2
    shift 2
    # The tests call them millions of times, but compiling takes longer than running: -O1 serves both.
    local options=(-G Ninja -Wno-dev -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF -DCMAKE_INSTALL_PREFIX="$prefix"
        -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_POSITION_INDEPENDENT_CODE=ON
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG")
    if command -v ccache >/dev/null; then
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake -S "build/sources/$name" -B "$build" "${options[@]}" "$@" &&
        cmake --build "$build" --parallel "$(nproc)" &&
        cmake --install "$build" &&
        rm -rf "$build"
}
