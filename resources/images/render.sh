#!/bin/sh
# Draws every image and icon of the program anew from its SVG source. Needs rsvg-convert.
set -eu
cd "$(dirname "$0")"

# image NAME SIZE: NAME.png, and NAME@2x.png and NAME@3x.png for denser screens. What lies between
# is drawn down from the next one, which stays sharp; drawn up it would not.
image() {
    rsvg-convert --width "$2" --height "$2" --output "$1.png" "src/$1.svg"
    for density in 2 3; do
        side="$(($2 * density))"
        rsvg-convert --width "$side" --height "$side" --output "$1@${density}x.png" "src/$1.svg"
    done
}

# icon SIZE SOURCE: the application icon at one size of the icon theme.
icon() {
    folder="../icons/hicolor/$1x$1/apps"
    mkdir -p "$folder"
    rsvg-convert --width "$1" --height "$1" --output "$folder/reelshift.png" "src/$2.svg"
}

image table_close2 20
image table_pause2 20
image table_play2 20
image table_pause 16
image Popup_I 64

# The full drawing turns to mud below 32 pixels.
for size in 16 22 24; do
    icon "$size" reelshift-small
done
for size in 32 48 64 128 256 512; do
    icon "$size" reelshift
done
mkdir -p ../icons/hicolor/scalable/apps
cp src/reelshift.svg ../icons/hicolor/scalable/apps/reelshift.svg
