# The distribution's packages that each kind of work needs, and what to do when some are missing.
# Sourced by ./dev and .ci/run.

packages_build=(g++ cmake ninja-build ccache libsimdjson-dev libfast-float-dev libcli11-dev libfmt-dev)
packages_test=(libgtest-dev librapidcheck-dev pkg-config python3-minimal)
packages_clang=(clang-14 libclang-rt-14-dev)
packages_libcxx=(cmake ninja-build ccache python3-minimal)
packages_emulated=(qemu-user)
declare -A cross_compilers=([aarch64]=g++-aarch64-linux-gnu [armhf]=g++-arm-linux-gnueabihf [s390x]=g++-s390x-linux-gnu)
packages_windows=(g++-mingw-w64-x86-64-posix wine64)
packages_lint=(clang-format-14 clang-tidy-22 python3-minimal git)
packages_bench=(nlohmann-json3-dev rapidjson-dev)
packages_compare=(git python3-minimal)
packages_docs=(doxygen)
# Programs that read the schemas, the page of an audit, the manual, the completions and the package as their users do,
# each as program:package, since another copy of the program serves as well. Only .ci/run installs them; tests that need
# one of them are skipped without it.
readers=(node:nodejs npm:npm chromium:chromium man:man-db zsh:zsh fish:fish
    dpkg-shlibdeps:dpkg-dev file:file)

is_installed() {
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# The packages of the readers that are not there.
missing_readers() {
    local reader
    for reader in "${readers[@]}"; do
        command -v "${reader%:*}" >/dev/null || echo "${reader#*:}"
    done
}

# Makes sure that the packages are there: installs them, or says how to and ends the script.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        # Not a distribution of that family: the tools may well be there under other names.
        return 0
    fi
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    if [[ ${#missing[@]} -eq 0 ]]; then
        return 0
    fi

    if [[ $EUID -ne 0 ]] || ! command -v apt-get >/dev/null; then
        {
            echo "These packages are missing: ${missing[*]}"
            echo "Install them with:"
            echo "  sudo apt-get update && sudo apt-get install -y ${missing[*]}"
        } >&2
        exit 1
    fi

    echo "Installing missing packages: ${missing[*]}" >&2
    local log
    log=$(mktemp)
    if ! apt-get update >"$log" 2>&1; then
        tail -n 5 "$log" >&2
        echo "apt-get update failed, see above; trying with the package lists that are there" >&2
    fi
    if ! DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends -o DPkg::Lock::Timeout=300 \
        "${missing[@]}" >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        local failed=()
        for package in "${missing[@]}"; do
            is_installed "$package" || failed+=("$package")
        done
        echo "Could not install: ${failed[*]}. apt-get's last lines are above." >&2
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}
