#!/bin/sh
# Whole-run scale benchmark (make bench-scale): generates radio nodes of
# several sizes, upgrades each with the real program through
# upgrade-wrapper-sim, and compares wall time and peak RSS with one streaming
# parse of the same dump (xmllint --stream), the floor of any reader; with
# python3-lxml present, also with a short lxml script doing the same rename.
#
# usage: bench/scale/bench-scale.sh <build dir> [objects per size...]
# default sizes: 100000 1000000; then four schemas of SCHEMA_OBJECTS (default
# 250000; 0 leaves this part out) each, run together and one after another. Nodes are generated once
# into <build dir>/bench-scale/ and kept; runs write below it too.
set -eu

build=$(cd "${1:?usage: bench-scale.sh <build dir> [objects...]}" && pwd)
shift
sizes=${*:-100000 1000000}
four=${SCHEMA_OBJECTS:-250000}
tools=$build/bench-scale-tools
wrapper=$build/tools/upgrade-wrapper-sim
program=$build/voskOamUpgrader/src/vosk-oam-upgrader
work=$build/bench-scale
here=$(cd "$(dirname "$0")" && pwd)
for needed in "$tools/vosk-bench-scale-node" "$tools/vosk-bench-measure" "$wrapper" "$program"; do
    [ -x "$needed" ] || { echo "bench-scale: $needed is missing; build first (make build)" >&2; exit 1; }
done
command -v xmllint >/dev/null || { echo "bench-scale: xmllint is missing (libxml2-utils)" >&2; exit 1; }
lxml=no
for python in python3 /usr/bin/python3; do
    "$python" -c 'import lxml' 2>/dev/null && { lxml=yes; break; }
done

# measure <label> <command...>: runs it, prints "<seconds> <KiB>" and fails
# the benchmark when the command fails.
measure() {
    label=$1
    shift
    result=$("$tools/vosk-bench-measure" "$@" 2>&1 >"$work/last.out" | tail -n 1)
    set -- $result
    [ "${3:-}" = 0 ] || { echo "bench-scale: $label failed (status ${3:-}), output in $work/last.out" >&2; kill $$; }
    echo "$1 $2"
}

node_of() {  # node_of <name> <objects> <schemas>
    dir=$work/nodes/$1
    [ -f "$dir/done" ] || {
        rm -rf "$dir"
        "$tools/vosk-bench-scale-node" --objects "$2" --schemas "$3" --out "$dir"
        touch "$dir/done"
    }
    echo "$dir"
}

upgrade() {  # upgrade <node dir> <out dir>
    rm -rf "$2"
    measure "upgrade of $1" "$wrapper" --program "$program" --package "$1/package" --node "$1/node" --out "$2" \
        --timeout 3600
}

objects_in() { grep -c '<object ' "$1"; }

mkdir -p "$work"
printf '%-14s %9s %9s %9s %9s %11s %9s %7s\n' "node" "objects" "floor s" "floor MiB" "run s" "run MiB" \
    "lxml s" "x floor"
for n in $sizes; do
    node=$(node_of "ran-$n" "$n" 1)
    dump=$node/node/imm/old/Ran.xml
    set -- $(measure xmllint xmllint --stream --noout "$dump")
    floor_s=$1 floor_kb=$2
    set -- $(upgrade "$node" "$work/out-$n")
    run_s=$1 run_kb=$2
    [ "$(objects_in "$work/out-$n/model/Ran.xml")" = "$(objects_in "$dump")" ] ||
        { echo "bench-scale: the new model of $n objects lost objects" >&2; exit 1; }
    lxml_s=-
    if [ "$lxml" = yes ]; then
        set -- $(measure lxml "$python" "$here/lxml_rename.py" "$dump" "$work/lxml-$n.xml")
        lxml_s=$1
    fi
    eval "run_$n=$run_s"
    printf '%-14s %9s %9s %9d %9s %11d %9s %7.1f\n' "ran-$n" "$n" "$floor_s" $((floor_kb / 1024)) "$run_s" \
        $((run_kb / 1024)) "$lxml_s" "$(echo "$run_s $floor_s" | awk '{ print $1 / $2 }')"
done
set -- $sizes
if [ $# -ge 2 ]; then
    eval "small=\$run_$1 large=\$run_$2"
    echo "$2 / $1 objects: run time ratio $(echo "$large $small" | awk '{ printf "%.1f", $1 / $2 }')"
fi

# Four schemas on their threads, against the same four one after another.
[ "$four" -gt 0 ] || exit 0
all=$(node_of "ran-4x$four" "$four" 4)
set -- $(upgrade "$all" "$work/out-4x$four")
together=$1
alone=0
for s in 1 2 3 4; do
    one=$work/nodes/ran-4x$four-only$s
    rm -rf "$one" && mkdir -p "$one/node/imm/old" "$one/node/imm/new" "$one/node/lmhi" "$one/package/appdata" \
        "$one/package/share/models"
    ln -s "$all/node/imm/old/Ran$s.xml" "$one/node/imm/old/"
    ln -s "$all/node/imm/new/Ran$s.xml" "$one/node/imm/new/"
    ln -s "$all/node/lmhi/Ran$s" "$one/node/lmhi/"
    ln -s "$all/package/share/models/Ran$s" "$one/package/share/models/"
    echo "Ran$s 1_0_0 2_0_0" >"$one/node/versions"
    printf '<voskOamUpgradeModLm>\n  <lmlist boardType="Ran%s"/>\n</voskOamUpgradeModLm>\n' "$s" \
        >"$one/package/appdata/voskOamUpgradeModLm.xml"
    set -- $(upgrade "$one" "$work/out-4x$four-only$s")
    alone=$(echo "$alone $1" | awk '{ print $1 + $2 }')
done
echo "4 schemas of $four objects: together ${together}s, one after another ${alone}s," \
    "speed-up $(echo "$alone $together" | awk '{ printf "%.2f", $1 / $2 }')"
