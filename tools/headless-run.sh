#!/usr/bin/env bash
# headless-run.sh FOLDER ARGUMENTS...: runs pageant-forge on a virtual display for ten seconds, or
# FORGE_RUN_SECONDS, beside a listening controller. FOLDER takes main-window.png, simulation.png
# and frames.json. Exit status 0 only if frames were heard.
set -eu
folder=$1
shift
binaries=build/release/bin
seconds=${FORGE_RUN_SECONDS:-10}
mkdir -p "$folder"
rm -f "$folder"/*.png "$folder"/frames.json "$folder"/*.log

if [ -z "${FORGE_VIRTUAL_DISPLAY:-}" ]; then
    export FORGE_VIRTUAL_DISPLAY=1
    exec xvfb-run -a -s "-screen 0 2400x1300x24" "$0" "$folder" "$@"
fi

# A first run: what the user's own settings hold must not switch the output off.
config=$(mktemp -d)
forge=""
listener=""
cleanup() {
    for process in $forge $listener; do
        kill "$process" 2>/dev/null || true
    done
    wait 2>/dev/null || true
    rm -rf "$config"
}
trap cleanup EXIT

"$binaries/forge-listen" --bind 127.0.0.1 --bind 127.0.0.2 --bind 127.0.0.3 --bind 127.0.0.4 \
    --bind 127.0.0.5 --bind 127.0.0.6 --seconds "$seconds" --json \
    >"$folder/frames.json" 2>"$folder/forge-listen.log" &
listener=$!
XDG_CONFIG_HOME=$config XDG_DATA_HOME=$config "$binaries/pageant-forge" "$@" \
    >"$folder/pageant-forge.log" 2>&1 &
forge=$!

# window_of TITLE: the id of the visible window whose title begins so; waits up to ten seconds.
window_of() {
    local id=""
    for _ in $(seq 100); do
        id=$(xdotool search --onlyvisible --name "^$1" 2>/dev/null | head -n 1 || true)
        [ -n "$id" ] && break
        sleep 0.1
    done
    echo "$id"
}

# Side by side: what a window covers can't be seen on a display without a compositor.
main=$(window_of "Orrin Pageant Forge")
simulation=$(window_of "Simulation")
if [ -n "$main" ] && [ -n "$simulation" ]; then
    xdotool windowsize "$main" 1180 860 windowmove "$main" 0 0
    xdotool windowsize "$simulation" 1180 860 windowmove "$simulation" 1200 0
    xdotool windowfocus "$main"
    for _ in 1 2 3 4; do
        xdotool key --delay 100 alt+s i # Simulation, Zoom In
    done
fi

heard=0
wait "$listener" || heard=$?
listener=""
[ -n "$main" ] && import -window "$main" "$folder/main-window.png"
[ -n "$simulation" ] && import -window "$simulation" "$folder/simulation.png"

echo "Screenshots:       $folder/main-window.png, $folder/simulation.png"
echo "Frames heard:      $folder/frames.json"
echo "The program's log: $folder/pageant-forge.log"
if ! kill -0 "$forge" 2>/dev/null; then
    echo "pageant-forge ended by itself; see its log." >&2
    exit 1
fi
if [ "$heard" -ne 0 ]; then
    echo "No frames were heard." >&2
    exit 1
fi
