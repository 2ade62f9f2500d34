#!/usr/bin/env bash
# Runs the fuzz targets that ./dev fuzz has built: old findings first, then the seeds, which are made of the
# examples, then new inputs. The inputs that an earlier run discovered are the start of the next one.
# A new finding is kept in fuzz/findings/<target>, to be fixed and then replayed by the tests.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=$1
shift
targets=("$@")
if [[ ${#targets[@]} -eq 0 ]]; then
    for source in fuzz/*Fuzz.cpp; do
        targets+=("$(basename "$source" Fuzz.cpp)")
    done
fi

fuzz_one() {
    local target=$1 program=build/asan/fuzz/fuzz-$1 corpus=build/fuzz/corpus/$1 seeds=build/fuzz/seeds/$1
    local findings=fuzz/findings/$1 log=build/fuzz/$1.log dictionary=() runs
    [[ -x $program ]] || { echo "no fuzz target '$target'" >&2 && return 1; }
    mkdir -p "$corpus" "$findings"
    scripts/fuzz_seeds.sh "$target" "$seeds"
    [[ -f fuzz/$target.dict ]] && dictionary=("-dict=fuzz/$target.dict")

    {
        find "$findings" -type f -print0 | xargs -0 -r "$program" &&
            find "$seeds" -type f -print0 | xargs -0 -r "$program" &&
            "$program" "$corpus" "$seeds" "${dictionary[@]}" -max_total_time="$seconds" \
                -artifact_prefix="$findings/" -print_final_stats=1 -timeout=10 -rss_limit_mb=2048
    } >"$log" 2>&1 || {
        tail -n 40 "$log" >&2
        echo "fuzz $target: a finding, see above and $findings" >&2
        return 1
    }
    rmdir --ignore-fail-on-non-empty "$findings"
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    echo "fuzz $target: old findings and seeds replayed, $runs new inputs in $seconds s, no finding"
}

# A target keeps one processor busy.
export seconds
export -f fuzz_one
printf '%s\0' "${targets[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -euo pipefail -c 'fuzz_one "$1"' fuzz_one
