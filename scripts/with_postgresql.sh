#!/bin/bash
# Usage: scripts/with_postgresql.sh COMMAND...
# Runs the command beside a PostgreSQL server of its own on a free port of the loopback interface and returns what the
# command returned. ORVO_TEST_POSTGRESQL tells the command how to connect. Whatever happens, the server is stopped
# and its files are gone afterwards.
set -euo pipefail
source "$(dirname "$0")/postgresql_server.sh"

child=
clean_up() {
    [[ -z $child ]] || kill -TERM -- "-$child" 2>/dev/null || true
    remove_server
}
whatever_happens clean_up

make_server fsync=off synchronous_commit=off full_page_writes=off max_connections=50
# A process group of its own, so that an interrupted run leaves none of the command's children behind. `wait` hears
# signals at once; a command in the foreground would let them wait for its end.
set -m
"$@" <&0 &
child=$!
set +m
result=0
wait "$child" || result=$?
child=
exit "$result"
