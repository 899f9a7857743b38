#!/bin/sh
# Installs the Debian packages that the build, the tests and the demo need,
# and only those that are missing, so a prepared machine is left untouched.
#
# With --arm64 also what the aarch64 cross build and its emulated test run
# need (make check-arm64): Debian's cross toolchain, qemu-user, and the arm64
# development packages through multiarch, beside the host's own.
set -eu

# clang and libclang-rt-14-dev build the fuzz programs (libFuzzer, the
# sanitizers' runtimes); llvm brings llvm-symbolizer for their reports.
# chromium renders vosk-modtool's HTML report in its test (headless).
packages="cmake g++ make pkg-config libxml2-dev libxml2-utils liblttng-ust-dev lttng-tools
babeltrace2 libgtest-dev libgmock-dev googletest libbenchmark-dev clang libclang-rt-14-dev llvm chromium"
if [ "${1:-}" = "--arm64" ]; then
    packages="$packages crossbuild-essential-arm64 qemu-user file libxml2-dev:arm64 liblttng-ust-dev:arm64
libgtest-dev:arm64 libgmock-dev:arm64"
fi

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
case "$missing" in
    *:arm64*) dpkg --print-foreign-architectures | grep -qx arm64 || dpkg --add-architecture arm64 ;;
esac
apt-get update -qq
# shellcheck disable=SC2086
apt-get install -y -qq --no-install-recommends $missing
