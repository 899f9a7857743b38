#!/bin/sh
# Installs what the aarch64 cross build and its emulated test run need
# (make check-arm64), and only what is missing: Debian's cross toolchain, the
# arm64 development packages through multiarch, and qemu-user to run the
# tests. The host's own packages (scripts/install-deps.sh) come first: the
# emulated tests use the host's lttng-tools and babeltrace2.
set -eu

"$(dirname "$0")/install-deps.sh"

packages="crossbuild-essential-arm64 qemu-user file libxml2-dev:arm64 liblttng-ust-dev:arm64
libgtest-dev:arm64 libgmock-dev:arm64"

installed() {
    dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q "install ok installed"
}

missing=""
for p in $packages; do
    installed "$p" || missing="$missing $p"
done

[ -z "$missing" ] && exit 0

echo "install-deps-arm64: installing:$missing"
if [ "$(id -u)" -ne 0 ]; then
    echo "install-deps-arm64: must run as root to install:$missing" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
if ! dpkg --print-foreign-architectures | grep -qx arm64; then
    dpkg --add-architecture arm64
fi
apt-get update -qq
# shellcheck disable=SC2086
apt-get install -y -qq --no-install-recommends $missing
