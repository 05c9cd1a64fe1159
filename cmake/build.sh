#!/usr/bin/env bash
# build.sh PRESET [TARGET...]: configures and builds a preset from the top of the tree.
set -eu
cd "$(dirname "$0")/.."
preset=$1
shift
echo "Building the preset $preset in build/$preset ..."
cmake --preset "$preset" >/dev/null
if [ $# -gt 0 ]; then
    cmake --build --preset "$preset" --target "$@"
else
    cmake --build --preset "$preset"
fi
