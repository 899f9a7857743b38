#!/bin/sh
# The demo behind `make demo`: upgrades the bundled example package on the
# bundled simulated radio node, through the wrapper simulator, and shows the
# report and the new model.
# Usage: scripts/demo.sh <build dir>
set -eu

build=${1:?usage: scripts/demo.sh <build dir>}
wrapper="$build/tools/upgrade-wrapper-sim"
program="$build/voskOamUpgrader/src/vosk-oam-upgrader"
for needed in "$wrapper" "$program"; do
    [ -x "$needed" ] || { echo "demo: $needed is missing; build first (make build)" >&2; exit 1; }
done
out="$(cd "$build" && pwd)/demo-out"

echo "== Upgrading examples/package on the simulated node examples/node"
echo "   (output folder $out)"
echo
status=0
"$wrapper" --program "$program" --package examples/package --node examples/node --out "$out" || status=$?

echo
echo "== New model files"
for file in "$out"/model/*.xml; do
    [ -e "$file" ] || continue
    echo "  $file: $(grep -c '<object ' "$file") objects"
done
echo
echo "== Last records of the persistent log ($out/log/saLogUpgrade/upgrade.log)"
tail -n 12 "$out/log/saLogUpgrade/upgrade.log" | cut -c1-200
exit "$status"
