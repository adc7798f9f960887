#!/bin/bash
# Usage: bench/load.sh [--build FOLDER] [--clients "1 10 50"] [--seconds N] [--members N] [--pause MS] [--built]
# Lets that many workstations without windows work a scripted day each, through the client's rules, on one register of
# a PostgreSQL server of its own, which falls in the middle of each day and is started again. Then asks the register
# whether every payment is there as its workstation knows it and every header settled, and prints the times. Ends with 1
# where something is wrong, or where of 50 clients the 95th percentile of a save is above a second. --pause is the rest
# between two things that a workstation does, on average. --built builds nothing.
set -euo pipefail
shopt -s inherit_errexit
cd "$(dirname "$0")/.."
source scripts/postgresql_server.sh

build=build clients="1 10 50" seconds=20 members=100000 pause=250 built=false
while (($#)); do
    case $1 in
        --build) build=$2; shift ;;
        --clients) clients=$2; shift ;;
        --seconds) seconds=$2; shift ;;
        --members) members=$2; shift ;;
        --pause) pause=$2; shift ;;
        --built) built=true ;;
        *) sed -n 2,7p "$0" >&2; exit 2 ;;
    esac
    shift
done

if ! $built; then
    cmake -S . -B "$build" -G Ninja >/dev/null
    ninja -C "$build" ${BENCH_JOBS:+-j"$BENCH_JOBS"} --quiet bench_workstation orvo_db
fi
workstation=$(realpath "$build")/bench/bin/bench_workstation
orvo_db=$(realpath "$build")/bin/orvo_db
of_each=8         # members, so that each is met again and again
down=1            # seconds between the fall of the server and its start
slowest_save=1000 # ms, the 95th percentile of 50 clients

say() { echo "$(date +%T) $*" >&2; }

work=$(mktemp -d -t orvo-load-XXXXXX)
running=()
clean_up() {
    ((${#running[@]} == 0)) || kill -TERM "${running[@]}" 2>/dev/null || true
    remove_server
    rm -rf "$work"
}
whatever_happens clean_up

read -r -a days <<<"$clients"
most=$(printf '%s\n' "${days[@]}" | sort -n | tail -n 1)
say "making a register of $members members"
make_server "max_connections=$((most * 2 + 20))" fsync=on
ask() { psql -qAtX "$ORVO_TEST_POSTGRESQL dbname=orvo_load" "$@"; }
mkdir -p "$work/register/conf"
printf '%s\n' "[SERVER]" engine=postgresql host=127.0.0.1 "port=$server_port" user=postgres database=orvo_load \
    mail_database=orvo_load_mail tls=prefer >"$work/register/conf/connection.ini"
chmod 600 "$work/register/conf/connection.ini"
"$orvo_db" --home "$work/register" init --create-databases >/dev/null 2>&1
"$orvo_db" --home "$work/register" demo --members "$members" --seed 1 --today 20260101 >/dev/null
ask -c "vacuum (analyze, freeze)" -c checkpoint
# All over the register, those with dues of some year.
ask -c "select pers_no from person_m_tbl where pers_no in (select pers_no from dues_h_tbl) order by md5(pers_no)" \
    >"$work/members"

number=0 # of the next workstation, of all days
members_of() { # number
    sed -n "$(($1 * of_each + 1)),$((($1 + 1) * of_each))p" "$work/members" | paste -sd ,
}

# Waits until so many logs hold the line, at most that many seconds.
await_in_logs() { # line count seconds
    local until=$((SECONDS + $3))
    while (($(grep -lx -- "$1" "$logs"/* 2>/dev/null | wc -l) < $2)); do
        ((SECONDS < until)) || { echo "Not every workstation says \"$1\"." >&2; tail -n 3 "$logs"/* >&2; return 1; }
        sleep 0.1
    done
}

work_a_day() { # clients
    local each gate
    logs=$work/logs-$1
    mkdir "$logs"
    mkfifo "$work/gate"
    for ((each = 0; each < $1; each++)); do
        mkdir -p "$work/home-$number"
        cp -r "$work/register/conf" "$work/home-$number/"
        timeout -k 5 $((seconds + 90)) "$workstation" --home "$work/home-$number" --number "$number" --members \
            "$(members_of "$number")" --seconds "$seconds" --pause "$pause" >"$logs/$number" <"$work/gate" &
        running+=($!)
        number=$((number + 1))
    done
    exec {gate}>"$work/gate"
    await_in_logs ready "$1" 60
    exec {gate}>&-
    sleep $((seconds / 2))
    let_server_fall
    sleep "$down"
    if ! start_server; then
        echo "The server does not start again:" >&2
        tail "$server_folder/server.log" >&2
        return 1
    fi
    for each in "${running[@]}"; do
        wait "$each" || { echo "A workstation ended by itself:" >&2; tail -n 3 "$logs"/* >&2; return 1; }
    done
    running=()
    rm -rf "$work/gate" "$work"/home-*
    for each in sample lost payment look change member failure; do
        sed -n "s/^$each\b/$1/p" "$logs"/* >>"$work/$each"
    done
}

for each in "${days[@]}"; do
    say "$each at work"
    work_a_day "$each"
done
say "looking into the register"
cd "$work"
ask -f "$OLDPWD/bench/load_check.sql"
cat table
echo "- Register of $members members, $(nproc) cores; days of $seconds s, rests of $pause ms on average; the saves that" \
    "met the fall are among those of the table"
result=0
if [[ -s faults ]]; then
    echo "- **$(wc -l <faults) faults:**"
    head -n 20 faults
    result=1
fi
if (($(<slowest) > slowest_save)); then
    echo "- **The 95th percentile of a save is above $slowest_save ms.**"
    result=1
fi
exit "$result"
