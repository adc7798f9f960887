#!/bin/bash
# Usage: bench/slow_line.sh [milliseconds]
# What an operator's acts take on a line whose every answer comes that much later (50 if none is named): a table of the
# acts, how often each waits for the server, and the time. Builds what it needs and starts a PostgreSQL of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh build -- waits_test
echo "| what | waits | time |"
echo "|---|---|---|"
ORVO_LINE_DELAY=${1:-50} QT_QPA_PLATFORM=offscreen scripts/with_postgresql.sh \
    build/tests/bin/waits_test/waits_test -silent 2>/dev/null | grep '^|'
