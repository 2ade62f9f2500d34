#!/usr/bin/env bash
# Makes the seeds of one fuzz target from the examples: scripts/fuzz_seeds.sh TARGET FOLDER
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
target=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder"

# One file for each distinct line.
split_lines() {
    sort -u | split --lines=1 --suffix-length=4 --numeric-suffixes - "$folder/line-"
    # The line feed is not part of the text.
    find "$folder" -name 'line-*' -exec truncate --size=-1 {} +
}

case $target in
    TextCleaning)
        grep -aohE '"([^"\\]|\\.)*[<&]([^"\\]|\\.)*"' examples/documents/*.json | sed 's/^"//; s/"$//' | split_lines
        ;;
    URL)
        grep -aohE '"[A-Za-z]*:?//[^"]*"' examples/documents/*.json | tr -d '"' | split_lines
        ;;
    Mapping)
        # The first byte names the mapper: that of a record is even, that of its pages follows. The pages of
        # the examples are long, so pages of one record are made.
        mapper=0
        for record in asset:assets category:categories editorial:editorial season:seasons; do
            document=examples/documents/${record%:*}.json
            { printf %d $mapper && cat "$document"; } >"$folder/${record%:*}"
            {
                printf '%d{"_embedded":{"%s":[' $((mapper + 1)) "${record#*:}"
                cat "$document"
                printf ',null]}}'
            } >"$folder/${record%:*}-page"
            mapper=$((mapper + 2))
        done
        ;;
    *)
        cp examples/documents/*.json "$folder"
        ;;
esac
