#!/bin/bash
# Usage: scripts/with_screen.sh COMMAND...
# Runs the command on a virtual screen of 1366x768 with a window manager, for machines without a display, and returns
# what the command returned.
set -euo pipefail

folder=$(mktemp -d)
children=()
clean_up() {
    ((${#children[@]} == 0)) || kill "${children[@]}" 2>/dev/null || true
    wait
    rm -rf "$folder"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# The server chooses a free display itself and writes its number when it is ready.
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$folder/number" >"$folder/log" 2>&1 &
children+=($!)
read -r -t 30 number <"$folder/number" || { cat "$folder/log" >&2; exit 1; }
export DISPLAY=:$number
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$folder}
# Without its manager a window is never active. It tells by the file that it manages.
openbox --startup "touch $folder/managed" >>"$folder/log" 2>&1 &
children+=($!)
for _ in {1..300}; do
    [[ ! -e $folder/managed ]] || break
    sleep 0.1
done
[[ -e $folder/managed ]] || { cat "$folder/log" >&2; exit 1; }
"$@"
