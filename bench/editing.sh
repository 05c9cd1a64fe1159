#!/usr/bin/env bash
# editing.sh [SECONDS]: how the frames of 15,000 lights keep their time while somebody edits the
# show: first untouched, then with clicks, typing, drags and colour dialogs without a pause. Prints
# what a listening controller heard of both. Needs build/release, Xvfb and xdotool.
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-20}
binaries=build/release/bin

if [ -z "${FORGE_INSIDE:-}" ]; then
    export FORGE_INSIDE=1
    exec tests/in-namespace.sh xvfb-run -a -s "-screen 0 1400x1000x24" "$0" "$seconds"
fi

work=$(mktemp -d)
forge=""
hand=""
cleanup() {
    for process in $hand $forge; do
        kill "$process" 2>/dev/null || true
    done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

"$binaries/forge-mapgen" grid --lights 15000 --layers 4 --alpha 0.5 --out "$work/wall"
XDG_CONFIG_HOME=$work XDG_DATA_HOME=$work QT_STYLE_OVERRIDE=fusion \
    "$binaries/pageant-forge" --map "$work/wall.map" --show "$work/wall.sho" \
    >"$work/forge.log" 2>&1 &
forge=$!

window=""
for _ in $(seq 300); do
    window=$(xdotool search --onlyvisible --name "Orrin Pageant Forge" 2>/dev/null | head -n 1 || true)
    [ -n "$window" ] && break
    sleep 0.1
done
sleep 3 # the splash
xdotool windowsize "$window" 1280 800 windowmove "$window" 0 0 windowfocus "$window"
sleep 1

# What a designer does, over and over: selects rows, types times, opens the colour dialog and drags
# in its spectrum. Not the time slider: a seek sends frames of its own, between the others.
edit() {
    while true; do
        xdotool mousemove 60 110 click 1 sleep 0.1 mousemove 60 134 click 1 sleep 0.1
        xdotool mousemove 230 500 click --repeat 3 --delay 20 1 type --delay 30 "1.5"
        sleep 0.2
        xdotool mousemove 1106 227 click 1 # of the second effect, a cross fade
        sleep 0.8
        dialog=$(xdotool search --onlyvisible --name "Select Color" | head -n 1)
        xdotool windowmove "$dialog" 0 0 windowfocus "$dialog"
        echo >>"$work/dialogs"
        xdotool mousemove 100 150 mousedown 1
        for step in $(seq 40); do
            xdotool mousemove $((100 + step * 5)) $((120 + step % 10 * 8))
            sleep 0.016
        done
        [ -z "${FORGE_PICTURE:-}" ] || import -window root "$FORGE_PICTURE"
        xdotool mouseup 1 key Escape
        sleep 0.3
        xdotool windowfocus "$window"
    done
}

listen() {
    "$binaries/forge-listen" --bind 127.0.0.1 --seconds "$seconds"
}
echo "Untouched:"
listen
edit &
hand=$!
echo "While somebody edits:"
listen
echo "Colour dialogs opened: $(wc -l <"$work/dialogs")"
kill -0 "$forge"
