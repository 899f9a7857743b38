#!/bin/sh
# Installs the Debian packages that the build, the tests and the demo need,
# and only those that are missing, so a prepared machine is left untouched.
set -eu

# clang and libclang-rt-14-dev build the fuzz programs (libFuzzer, the
# sanitizers' runtimes); llvm brings llvm-symbolizer for their reports.
packages="cmake g++ make pkg-config libxml2-dev libxml2-utils liblttng-ust-dev lttng-tools
babeltrace2 libgtest-dev libgmock-dev googletest libbenchmark-dev clang libclang-rt-14-dev llvm"

missing=""
for p in $packages; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $p"
    fi
done

[ -z "$missing" ] && exit 0

echo "install-deps: installing:$missing"
if [ "$(id -u)" -ne 0 ]; then
    echo "install-deps: must run as root to install:$missing" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
# shellcheck disable=SC2086
apt-get install -y -qq --no-install-recommends $missing
