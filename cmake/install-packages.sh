#!/usr/bin/env bash
# install-packages.sh [--run]: installs what the build and the tests need, where it is missing.
# With --run also what run.sh needs on a machine without a display.
set -eu
packages="g++ cmake ninja-build ccache qtbase5-dev libqt5svg5-dev libqt5svg5 libbenchmark-dev
    fonts-dejavu-core iproute2 util-linux clang-format python3 xvfb xauth"
if [ "${1:-}" = "--run" ]; then
    packages="$packages xdotool imagemagick"
fi

missing=""
for package in $packages; do
    if ! dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $package"
    fi
done
if [ -z "$missing" ]; then
    exit 0
fi

echo "Installing with apt-get:$missing"
as_root=""
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "These Debian packages are missing:$missing" >&2
        echo "Installing them takes root: run this again as root, or install sudo." >&2
        exit 1
    fi
    as_root="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -qq
# shellcheck disable=SC2086 # a list of words
$as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
