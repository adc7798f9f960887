#!/bin/bash
# Usage: bench/slow_line.sh [milliseconds]
# What an operator's acts take on a line whose every answer comes that much later (50 if none is named): a table of the
# acts, how often each waits for the server, and the time. Builds what it needs and starts a PostgreSQL of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh build -- waits_test broken_saves_test
echo "| what | waits | time |"
echo "|---|---|---|"
export ORVO_LINE_DELAY=${1:-50} QT_QPA_PLATFORM=offscreen
scripts/with_postgresql.sh bash -c 'build/tests/bin/waits_test/waits_test -silent
    build/tests/bin/broken_saves_test/broken_saves_test -silent costs_its_waits' 2>/dev/null | grep '^|'
