#!/bin/bash
# Usage: scripts/build.sh [folder] [arguments for cmake...] [-- targets...]
# Builds the targets (everything if none is named) into the folder (build/ if none is named), relative to the root.
# Silent unless it fails.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-build}
shift $(($# > 0))
options=()
while (($# > 0)) && [[ $1 != -- ]]; do
    options+=("$1")
    shift
done
shift $(($# > 0))

log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! cmake -S . -B "$folder" -G Ninja "${options[@]}" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
[[ -e $folder/.ninja_log ]] || echo "Building in $folder/; the first time takes some minutes."
if ! ninja -C "$folder" -j"$(nproc)" --quiet "$@" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
grep -v '^ninja: no work to do.$' "$log" >&2 || true # warnings
