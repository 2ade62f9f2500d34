#!/usr/bin/env bash
# Compiles the public headers and an application that uses them as one does that lets no warning pass:
# check_headers.sh COMPILER [FOLDER] [--each]
# FOLDER has the headers, and is that of the sources if none is named; --each compiles every header by itself too.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
compiler=$1
shift
folder=$root
if [[ ${1---each} != --each ]]; then
    folder=$1
    shift
fi

# Compiles the source that it reads.
compile() {
    "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
        -DQELMODELS_STATIC -I"$folder" "$@" -x c++ -
}

headers() {
    (cd "$folder" && find "$@" -name '*.h' -not -path '*/detail/*') | LC_ALL=C sort
}

includes() {
    sed 's/.*/#include <&>/'
}

[[ -n $(headers QELModels) && -n $(headers JSON) ]] || { echo "$folder has no headers" >&2 && exit 1; }

headers QELModels | includes | compile
# Templates are looked at where they are used.
{ headers JSON | includes && cat "$root/tests/consumer/Consumer.cpp"; } | compile
if [[ ${1-} == --each ]]; then
    headers QELModels JSON | while read -r header; do
        includes <<<"$header" | compile
    done
fi
