#!/bin/bash
# Usage: scripts/gallery.sh [build folder]
# Walks through the program three times (light, dark, light at 200 %) and leaves the pictures, with a page that shows
# them, in gallery/ of the build folder.
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
cd "$(dirname "$0")/.."

home=$build/gallery-register
gallery=$build/gallery
rm -rf "$home" "$gallery"
"$build/bin/orvo_db" --home "$home/made" demo --members 2000 --seed 1 --today 20261122 >/dev/null
export ORVO_HOME=$home/walked

# Each walk changes the register, and has a copy of its own.
walk() { # folder of the pictures, command in front of the walk...
    local out=$1
    shift
    rm -rf "$ORVO_HOME"
    cp -r "$home/made" "$ORVO_HOME"
    "$@" "$build/bin/orvo_tour" --out "$gallery/$out"
}
ORVO_THEME=light walk light scripts/with_screen.sh
ORVO_THEME=dark walk dark scripts/with_screen.sh
# A screen of that size is beyond the virtual one: each window is drawn for itself.
ORVO_THEME=light QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=2 walk light-200

{
    echo '<!doctype html><meta charset="utf-8"><title>Gallery</title>'
    echo '<style>body{font-family:sans-serif;margin:2em}img{max-width:100%;border:1px solid #bbb;margin:0 0 2em}</style>'
    for look in light dark light-200; do
        echo "<h1>$look</h1>"
        for picture in "$gallery/$look"/*.png; do
            name=$(basename "$picture" .png)
            echo "<h2>$name</h2><img src=\"$look/$name.png\" alt=\"$name\">"
        done
    done
} >"$gallery/index.html"
echo "The gallery is $gallery/index.html"
