#!/bin/bash
# Usage: ./run.sh [arguments for the client...]
# Installs what is missing, builds, and starts the client on a demo register, which is made at the first time. On a
# machine without a display it walks through the screens on a virtual one and leaves their pictures.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install.sh
scripts/build.sh build -- orvo orvo_db orvo_tour

demo=build/demo
if [[ ! -e $demo/operators.txt ]]; then
    rm -rf "$demo"
    echo "Filling a demo register in $demo/"
    build/bin/orvo_db --home "$demo" demo --members 2000 --seed 1 --today "$(date +%Y%m%d)" >"$demo.txt"
    mv "$demo.txt" "$demo/operators.txt"
fi
cat "$demo/operators.txt"

export ORVO_HOME=$PWD/$demo
if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    exec build/bin/orvo "$@"
fi
echo "There is no display: walking through the screens on a virtual one."
# The walk registers a member: on a copy, so that it can be walked again.
rm -rf build/tour-register
cp -r "$demo" build/tour-register
export ORVO_HOME=$PWD/build/tour-register
scripts/with_screen.sh build/bin/orvo_tour --out build/tour
echo "The pictures are in build/tour/, numbered in the order of the walk."
