#!/bin/sh
# Time and memory of the instance model per group size, each size in its own
# process so that the resident-memory figures belong to that size alone.
#
#   bench/instance-model-memory.sh [build directory] [sizes...]
#
# Prints per size and step: CPU ns per instance, resident bytes the built
# group adds per instance, and the process's peak resident bytes per instance
# (input records, model and, for the write step, the records for writing).
set -eu
build=${1:-build}
[ $# -gt 0 ] && shift
sizes=${*:-10000 100000 1000000}
bench="$build/bench/instance_model_bench"
[ -x "$bench" ] || { echo "no $bench: build with -DVOSK_BENCH=ON" >&2; exit 1; }

printf '%-10s %-26s %14s %16s %16s\n' size step ns/instance model_B/instance peak_B/instance
for size in $sizes; do
  "$bench" --benchmark_filter="/$size/" --benchmark_format=csv 2>/dev/null |
    awk -F, -v size="$size" '
      { gsub(/"/, "") }
      NR == 1 { for (i = 1; i <= NF; i++) column[$i] = i; next }
      {
        step = $1; sub(/\/.*/, "", step)
        model = $column["model_B_per_instance"]
        printf "%-10s %-26s %14.0f %16s %16.0f\n", size, step, $column["ns_per_instance"], \
               (model == "" ? "-" : sprintf("%.0f", model)), $column["peak_B_per_instance"]
      }'
done
