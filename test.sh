#!/usr/bin/env bash
# Installs what is missing, builds the preset "release" and runs every test. Arguments go to ctest.
set -eu
cd "$(dirname "$0")"
cmake/install-packages.sh
cmake/build.sh release
exec ctest --preset release -j2 "$@"
