# Packages of other architectures and releases, and sources of packages: fetched with the archive and the keys that
# this machine trusts, and laid into folders of the build. Nothing is installed. Sourced by ./dev and scripts.

# The release that this machine's own packages are of.
own_suite() {
    (. /etc/os-release && echo "$VERSION_CODENAME")
}

# foreign_apt SUITE ARCHITECTURE COMMAND...: apt-get for that release and architecture, with lists of its own. The suite
# `own` is whatever this machine installs from, security updates included.
foreign_apt() {
    local suite=$1 architecture=$2
    shift 2
    local state=$PWD/build/apt/$suite-$architecture
    if [[ $suite == own ]]; then
        mkdir -p "$state"
        apt-get -q "$@" >"$state/log" 2>&1 || { cat "$state/log" >&2 && return 1; }
        return 0
    fi
    if [[ ! -e $state/updated ]]; then
        mkdir -p "$state/lists/partial" "$state/cache/archives/partial" "$state/parts"
        : >"$state/status"
        # The archive is the one that this release's own packages come from.
        local uri
        uri=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' 'Component: main' |
            sed -n "s/ $(own_suite)\$//p" | head -n 1)
        [[ -n $uri ]] || { echo "no archive of this release is known to apt-get" >&2 && return 1; }
        printf 'Types: deb deb-src\nURIs: %s\nSuites: %s\nComponents: main\nArchitectures: %s\nSigned-By: %s\n' \
            "$uri" "$suite" "$architecture" /usr/share/keyrings/debian-archive-keyring.gpg >"$state/parts/archive.sources"
    fi
    local options=(-q -o "APT::Architecture=$architecture" -o "APT::Architectures=$architecture"
        -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$state/parts" -o "Dir::State::status=$state/status"
        -o "Dir::State::lists=$state/lists" -o "Dir::Cache=$state/cache" -o "APT::Sandbox::User=root")
    if [[ ! -e $state/updated ]]; then
        apt-get "${options[@]}" update >"$state/log" 2>&1 || { cat "$state/log" >&2 && return 1; }
        touch "$state/updated"
    fi
    apt-get "${options[@]}" "$@" >"$state/log" 2>&1 || { cat "$state/log" >&2 && return 1; }
}

# unpack_packages ROOT SUITE ARCHITECTURE PACKAGES...: their files below ROOT. What they depend on has to be named.
unpack_packages() {
    local root=$PWD/$1 suite=$2 architecture=$3
    shift 3
    local package wanted=()
    for package in "$@"; do
        [[ -e $root/unpacked/$package ]] || wanted+=("$package")
    done
    [[ ${#wanted[@]} -gt 0 ]] || return 0
    rm -rf "$root/archives"
    mkdir -p "$root/archives" "$root/unpacked"
    (here=$PWD && cd "$root/archives" && PWD=$here foreign_apt "$suite" "$architecture" download "${wanted[@]}") || return 1
    for package in "$root"/archives/*.deb; do
        dpkg-deb -x "$package" "$root" || return 1
    done
    rm -rf "$root/archives"
    touch "${wanted[@]/#/$root/unpacked/}"
}

# unpack_sources FOLDER SUITE PACKAGE...: the sources of packages, each in FOLDER/PACKAGE.
unpack_sources() {
    local folder=$PWD/$1 suite=$2 package
    shift 2
    for package in "$@"; do
        [[ ! -e $folder/$package ]] || continue
        rm -rf "$folder/archives"
        mkdir -p "$folder/archives"
        (here=$PWD && cd "$folder/archives" &&
            PWD=$here foreign_apt "$suite" "$(dpkg --print-architecture)" source --download-only --tar-only "$package") || return 1
        mkdir "$folder/archives/tree"
        tar -xf "$folder"/archives/*.orig.tar.* -C "$folder/archives/tree" || return 1
        # Most archives hold one folder with everything in it, some the files themselves.
        local tree=("$folder"/archives/tree/*)
        [[ ${#tree[@]} -eq 1 ]] || tree=("$folder/archives/tree")
        mv "${tree[0]}" "$folder/$package"
        rm -rf "$folder/archives"
    done
}
