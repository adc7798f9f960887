#!/bin/bash
# Usage: scripts/with_postgresql.sh COMMAND...
# Runs the command beside a PostgreSQL server of its own on a free port of the loopback interface and returns what the
# command returned. ORVO_TEST_POSTGRESQL tells the command how to connect. Whatever happens, the server is stopped
# and its files are gone afterwards.
set -euo pipefail

programs=$(find /usr/lib/postgresql -maxdepth 2 -name bin 2>/dev/null | sort -V | tail -n 1)
[[ -x $programs/initdb ]] || { echo "There is no PostgreSQL server on this machine." >&2; exit 1; }

folder=$(mktemp -d -t orvo-postgresql-XXXXXX)
chmod 755 "$folder"
as_server=()
if ((EUID == 0)); then # the server refuses to run as root
    chown postgres: "$folder"
    as_server=(runuser -u postgres --)
fi
server() { (cd "$folder" && "${as_server[@]}" "$programs/$1" -D "$folder/data" "${@:2}"); }

child=
clean_up() {
    trap '' INT TERM HUP
    [[ -z $child ]] || kill -TERM -- "-$child" 2>/dev/null || true
    [[ ! -e $folder/data/postmaster.pid ]] || server pg_ctl -m immediate -w stop >/dev/null 2>&1 || true
    rm -rf "$folder"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP

if ! server initdb -U postgres -A trust -E UTF8 --locale=C.UTF-8 --no-sync >"$folder/log" 2>&1; then
    cat "$folder/log" >&2
    exit 1
fi

# A port can be taken between the look and the start, so the start itself decides. Below 32768 no client line of
# the system's own takes it.
started=false
for _ in {1..20}; do
    port=$((20000 + RANDOM % 12000))
    settings="-p $port -c listen_addresses=127.0.0.1 -c unix_socket_directories='' -c fsync=off"
    settings+=" -c synchronous_commit=off -c full_page_writes=off -c max_connections=50"
    if server pg_ctl -l "$folder/server.log" -w -t 60 -o "$settings" start >/dev/null 2>&1; then
        started=true
        break
    fi
done
$started || { echo "PostgreSQL does not start:" >&2; tail -n 20 "$folder/server.log" >&2; exit 1; }

export ORVO_TEST_POSTGRESQL="host=127.0.0.1 port=$port user=postgres"
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
