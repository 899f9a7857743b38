#!/bin/sh
# Runs every libFuzzer program of a fuzz build (cmake -DVOSK_FUZZ=ON with
# clang) for a time each, one after the other.
#
# usage: scripts/fuzz.sh <build folder> <seconds per target>
#
# A program starts from the seeds in fuzz/corpus/<inputs>, the inputs it
# found in earlier runs (<build>/fuzz-corpus/<target>, where new ones go) and
# fuzz/regressions/<target>, with the dictionary fuzz/dict/<inputs>.dict. An
# input that crashes, leaks, hangs (10 s) or runs out of memory is written to
# <build>/fuzz-artifacts/<target>/; the script then prints the end of the
# program's log (<build>/fuzz-logs/<target>.log) and fails at the end.
set -eu

build=$1
seconds=$2
source=$(cd "$(dirname "$0")/.." && pwd)
list=$build/fuzz/targets.txt
[ -f "$list" ] || { echo "fuzz: $list missing: configure $build with -DVOSK_FUZZ=ON" >&2; exit 1; }

mkdir -p "$build/fuzz-logs"
failed=""
while read -r target inputs; do
    program=$build/fuzz/fuzz_$target
    corpus=$build/fuzz-corpus/$target
    artifacts=$build/fuzz-artifacts/$target
    log=$build/fuzz-logs/$target.log
    mkdir -p "$corpus" "$artifacts"
    set -- "$corpus" "$source/fuzz/corpus/$inputs"
    [ -d "$source/fuzz/regressions/$target" ] && set -- "$@" "$source/fuzz/regressions/$target"
    if "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=16384 \
            -print_final_stats=1 -dict="$source/fuzz/dict/$inputs.dict" -artifact_prefix="$artifacts/" \
            "$@" >"$log" 2>&1; then
        runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        cov=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1)
        printf 'fuzz %-17s %9s runs in %ss, %s, corpus %s files\n' "$target" "$runs" "$seconds" "$cov" \
            "$(ls "$corpus" | wc -l)"
    else
        echo "fuzz $target FAILED: inputs in $artifacts, log $log" >&2
        tail -n 60 "$log" >&2
        failed="$failed $target"
    fi
done <"$list"

[ -z "$failed" ] || { echo "fuzz: failed:$failed" >&2; exit 1; }
