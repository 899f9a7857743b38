#!/bin/sh
# Runs every benchmark program built in <build dir>/bench.
# Usage: scripts/bench.sh <build dir>
set -eu

build=${1:?usage: scripts/bench.sh <build dir>}
dir="$build/bench"
found=0
if [ -d "$dir" ]; then
    for program in $(find "$dir" -type f -perm -u+x ! -name '*.so' ! -path '*/CMakeFiles/*' | sort); do
        found=$((found + 1))
        echo "== $program"
        "$program"
    done
fi
[ "$found" -gt 0 ] || echo "bench: no benchmark programs in $dir yet"
