#!/bin/sh
# Redraws every picture: the SVG sources by their scripts, then the PNGs (rsvg-convert, from
# librsvg2-bin). The results are checked in; run it after a change to a drawing.
set -eu
cd "$(dirname "$0")"

python3 make_icons.py
python3 make_splash.py

for size in 16 24 32 48; do
    mkdir -p "icons/$size" "$size"
    for source in icons/*.svg; do
        rsvg-convert -w "$size" -h "$size" "$source" -o "icons/$size/$(basename "$source" .svg).png"
    done
    rsvg-convert -w "$size" -h "$size" userIcon.svg -o "$size/userIcon.png"
done
for name in splash ColorSelection TransparentBackground; do
    rsvg-convert "$name.svg" -o "$name.png"
done
