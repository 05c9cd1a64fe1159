#!/usr/bin/env bash
# on-display.sh COMMAND...: runs a command on a virtual display of its own, without the graphics
# driver and the session bus, which leave memory behind that no suppression can name.
set -eu
if ! command -v xvfb-run >/dev/null; then
    echo "Skipped: this needs xvfb-run (Debian package xvfb)." >&2
    exit 77
fi
exec xvfb-run -a -s "-screen 0 1400x1000x24" env QT_QPA_PLATFORM=xcb \
    QT_XCB_GL_INTEGRATION=none DBUS_SESSION_BUS_ADDRESS=disabled: "$@"
