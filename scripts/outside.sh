#!/bin/bash
# Usage: scripts/outside.sh [times]
# What needs peers or hundreds of falls, by hand and before each release; not in CI. On the embedded engine and on a
# PostgreSQL server of its own a client is killed in the middle of its saves that often (300), and the next start
# finishes what was begun; 10 workstations work while their server falls; failures at a commit, time-outs and lost
# answers by the tests of the lines; what has threads under the thread sanitizer. Prints what docs/trust.md quotes; ends
# with 1 where something is lost.
set -euo pipefail
cd "$(dirname "$0")/.."
times=${1:-300}
scripts/build.sh build -- bench_killed_saves bench_workstation orvo_db broken_saves_test lost_line_test odbc_test connection_test
source scripts/postgresql_server.sh

work=$(mktemp -d -t orvo-outside-XXXXXX)
clean_up() {
    remove_server
    rm -rf "$work"
}
whatever_happens clean_up

result=0
make_server fsync=on max_connections=60
mkdir -p "$work/postgresql/conf" "$work/embedded"
(umask 077 && printf '%s\n' "[SERVER]" engine=postgresql host=127.0.0.1 "port=$server_port" user=postgres \
    database=orvo_outside mail_database=orvo_outside_mail tls=require >"$work/postgresql/conf/connection.ini")
build/bin/orvo_db --home "$work/postgresql" init --create-databases >/dev/null 2>&1
echo "| engine | kills | in the middle of a save | saves told as stored | lost, doubled or half done |"
echo "|---|---|---|---|---|"
for each in embedded postgresql; do
    build/bin/orvo_db --home "$work/$each" demo --members 400 --seed 1 --today 20260101 >/dev/null
    build/bench/bin/bench_killed_saves --home "$work/$each" --times "$times" || result=1
done
remove_server
server_folder=

echo
echo "Workstations whose server falls in the middle of the day:"
bench/load.sh --built --clients 10 --seconds 20 --members 2000 --pause 20 || result=1

echo
echo "Saves broken at each statement; lines lost, stalled, timed out; failures at the commit:"
export QT_QPA_PLATFORM=offscreen
scripts/with_postgresql.sh ctest --test-dir build -R '^(broken_saves|lost_line|odbc|connection)_test$' || result=1

echo
echo "What has threads, under the thread sanitizer:"
scripts/build.sh build-threads -DORVO_SANITIZE_THREADS=ON -- odbc_test write_list_test export_list_test
TSAN_OPTIONS=halt_on_error=1 scripts/with_postgresql.sh \
    ctest --test-dir build-threads -R '^(odbc|write_list|export_list)_test$' || result=1
exit "$result"
