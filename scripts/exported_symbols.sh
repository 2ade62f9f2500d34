#!/usr/bin/env bash
# Compares what the shared libraries of a build folder export with the list that is checked in, or rewrites
# that list: exported_symbols.sh BUILD_FOLDER [--update]
set -euo pipefail

build=$1
list=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/tests/exported-symbols.txt

exported() {
    local library
    for library in "$build"/QELModels/libQELModels.so "$build"/JSON/libQELModelsJSON.so; do
        [[ -e $library ]] || continue
        # Instantiations of the standard library's templates come and go with the compiler's inlining, and
        # are not ours to promise. A function's name after its address and type letter decides whose it is.
        nm --dynamic --defined-only --demangle "$library" | cut -d ' ' -f 3- |
            grep -vE '^(typeinfo (name )?for |vtable for )?(std|__gnu_cxx|__cxxabiv1)::' |
            grep -vE '^[a-z_:<>, *&]* std::' || true
    done | LC_ALL=C sort -u
}

if [[ ${2-} == --update ]]; then
    exported >"$list"
    echo "$list: $(wc -l <"$list") symbols"
elif ! diff -u --label "checked in" --label exported "$list" <(exported); then
    echo "The shared libraries export other symbols than the list says (+ too many, - missing)." >&2
    echo "When that is meant: ./dev symbols --update" >&2
    exit 1
fi
