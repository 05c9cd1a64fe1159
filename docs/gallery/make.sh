#!/usr/bin/env bash
# make.sh: renews the pictures of the program's windows in docs/gallery, from the program itself,
# on a virtual display and in a network namespace of its own.
set -eu
cd "$(dirname "$0")/../.."
gallery=docs/gallery

# play FOLDER MAP SHOW SECONDS: leaves screenshots of a show, after so long, in artifacts/FOLDER.
play() {
    FORGE_RUN_SECONDS=$4 tests/in-namespace.sh tools/headless-run.sh "artifacts/$1" \
        --map "examples/$2" --show "examples/$3"
}

if [ "${1:-}" != "--dialogs" ]; then
    cmake/install-packages.sh --run
    cmake/build.sh release pageant-forge forge-listen forge-picker-demo FirstShowTest \
        FormGalleryTest
    play gallery facade/facade.map facade/facade.sho 10
    cp artifacts/gallery/main-window.png artifacts/gallery/simulation.png "$gallery"
    play gallery-all-effects facade/facade.map facade/all-effects.sho 35
    cp artifacts/gallery-all-effects/simulation.png "$gallery/all-effects.png"
    play gallery-ring ring/ring.map ring/ring.sho 31
    cp artifacts/gallery-ring/simulation.png "$gallery/ring.png"
    picker_home=$(mktemp -d)
    XDG_CONFIG_HOME=$picker_home XDG_DATA_HOME=$picker_home tests/on-display.sh \
        build/release/bin/forge-picker-demo --gallery "$gallery"
    for pictures in FirstShowTest FormGalleryTest; do
        FORGE_PICTURES=$gallery QT_QPA_PLATFORM=offscreen QT_STYLE_OVERRIDE=fusion \
            XDG_CONFIG_HOME=$picker_home XDG_DATA_HOME=$picker_home \
            tests/in-namespace.sh "build/release/tests/program/$pictures"
    done
    rm -rf "$picker_home"
    tests/in-namespace.sh xvfb-run -a -s "-screen 0 1400x1000x24" "$0" --dialogs
    ls -l "$gallery"/*.png
    exit 0
fi

config=$(mktemp -d)
forge=""
cleanup() {
    [ -z "$forge" ] || kill "$forge" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$config"
}
trap cleanup EXIT

XDG_CONFIG_HOME=$config XDG_DATA_HOME=$config build/release/bin/pageant-forge &
forge=$!

# wait_for COMMAND...: runs the command until it prints something, for ten seconds at most.
wait_for() {
    local answer=""
    for _ in $(seq 100); do
        answer=$("$@" 2>/dev/null | head -n 1 || true)
        [ -n "$answer" ] && break
        sleep 0.1
    done
    if [ -z "$answer" ]; then
        echo "Nothing came of: $*" >&2
        return 1
    fi
    echo "$answer"
}
titled() {
    xdotool search --onlyvisible --name "^$1"
}
# Splash and about box have no title; they are as large as their picture.
picture_box() {
    local id
    for id in $(xdotool search --onlyvisible --name '.*'); do
        if xdotool getwindowgeometry "$id" | grep -q "Geometry: 600x380"; then
            echo "$id"
        fi
    done
}
no_picture_box() {
    [ -n "$(picture_box)" ] || echo gone
}
# shoot WINDOW FILE: the picture of a window once it has painted itself.
shoot() {
    sleep 0.5
    import -window "$1" "$gallery/$2"
}

main=$(wait_for titled "Orrin Pageant Forge")
wait_for no_picture_box >/dev/null
xdotool windowfocus "$main"
xdotool key --delay 100 alt+e p
shoot "$(wait_for titled "Edit Preferences")" preferences.png
xdotool key Escape
sleep 0.5
xdotool windowfocus "$main"
xdotool key --delay 100 alt+h Return
shoot "$(wait_for picture_box)" about.png
