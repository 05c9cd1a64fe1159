#!/usr/bin/env bash
# run.sh [ARGUMENTS]: installs what is missing, builds the preset "release" and starts
# pageant-forge, with the arguments given, else with the example installation. Without a display
# it runs on a virtual one for some seconds beside a listening controller, and leaves screenshots
# and a report of the frames that were heard in artifacts/run.
set -eu
cd "$(dirname "$0")"

if [ $# -eq 0 ]; then
    set -- --map examples/facade/facade.map --show examples/facade/facade.sho
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    cmake/install-packages.sh
    cmake/build.sh release pageant-forge forge-listen
    echo "Starting build/release/bin/pageant-forge $*"
    exec build/release/bin/pageant-forge "$@"
fi

echo "There is no display here: the program runs on a virtual one for some seconds."
cmake/install-packages.sh --run
cmake/build.sh release pageant-forge forge-listen
status=0
tests/in-namespace.sh tools/headless-run.sh artifacts/run "$@" || status=$?
if [ "$status" -eq 77 ]; then
    echo "No network namespace of its own can be had, so the program uses this machine's network:"
    echo "its start-up packets and the frames of the map leave for their real addresses."
    status=0
    tools/headless-run.sh artifacts/run "$@" || status=$?
fi
exit "$status"
