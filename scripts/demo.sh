#!/bin/sh
# The demo behind `make demo`: shows the upgrader's pieces at work on a
# simulated node.
# Usage: scripts/demo.sh <build dir>
set -eu

build=${1:?usage: scripts/demo.sh <build dir>}
tool="$build/tools/log-demo/vosk-log-demo"
[ -x "$tool" ] || { echo "demo: $tool is missing; build first (make build)" >&2; exit 1; }

cat <<'TEXT'
== What this demo shows

The upgrade framework's entry and the product binary are being built. Once
they are in, this demo upgrades the example package in examples/ on a
simulated node through upgrade-wrapper-sim and shows the new model, the
persistent log and the wrapper's report.

What runs today: the modification-file lookup. A simulated node gets two
schemas with load modules of modification files; the lookup asks the
simulated load-module handler for each schema's files, as the framework does
before it starts one thread per schema, and writes the persistent log.
The schema Lrat has its handler call failed on purpose (VOSK_SIM_FAULTS).

TEXT

node=$(mktemp -d /tmp/vosk-demo-XXXXXX)
trap 'rm -rf "$node"' EXIT
tag="$node/lmhi/RadioNode/modification_files"
for file in CXP9024418_1/RadioNode_1_0_0_to_1_1_0.xml CXP9024418_1/RadioNode_1_1_0_to_2_0_0.xml \
            CXP9024419_2/RadioNode_2_0_0_to_2_1_0.xml; do
    mkdir -p "$(dirname "$tag/$file")"
    echo '<upgrade/>' >"$tag/$file"
done
mkdir -p "$node/lmhi/Lrat/modification_files/CXP9024420_1"
echo '<upgrade/>' >"$node/lmhi/Lrat/modification_files/CXP9024420_1/Lrat_3_0_0_to_4_0_0.xml"

echo "== Simulated node $node"
(cd "$node" && find lmhi -type f | sort | sed 's/^/  /')
echo
echo "== VOSK_SIM_ROOT=$node VOSK_SIM_FAULTS=get_lms@Lrat=5 vosk-log-demo RadioNode Lrat"
VOSK_SIM_ROOT="$node" VOSK_SIM_OUT="" VOSK_SIM_FAULTS="get_lms@Lrat=5" WMT_NAME=voskOamUpgrader "$tool" RadioNode Lrat
echo
echo "== Persistent log: out/log/saLogUpgrade/upgrade.log"
sed 's/^/  /' "$node/out/log/saLogUpgrade/upgrade.log"
