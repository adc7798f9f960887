#!/bin/bash
# Usage: ./test.sh [--sanitize] [arguments for ctest...]
# Installs what is missing, builds, and runs every test beside a PostgreSQL server of its own. With --sanitize under
# the address and undefined-behaviour sanitizers, in a build tree beside the usual one.
set -euo pipefail
cd "$(dirname "$0")"

folder=build
options=(-DORVO_SANITIZE=OFF)
if [[ ${1:-} == --sanitize ]]; then
    shift
    folder=build-sanitize
    options=(-DORVO_SANITIZE=ON)
    export ASAN_OPTIONS=halt_on_error=1:detect_leaks=1
    export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
fi

scripts/install.sh
scripts/build.sh "$folder" "${options[@]}"
export QT_QPA_PLATFORM=offscreen
scripts/with_postgresql.sh ctest --test-dir "$folder" --output-on-failure --parallel 2 "$@"
