#!/bin/bash
# Usage: bench/run.sh [--build FOLDER] [--xcb] [--embedded] [--quick]
# Measures the client beside its floors and prints the table, which is left in FOLDER/bench/table.md too (build/ if no
# folder is named). Builds what it needs and makes the registers, which takes some minutes the first time. --xcb draws on
# a virtual screen instead of in memory; --embedded leaves PostgreSQL out; --quick takes few samples, to try the road.
# BENCH_JOBS bounds the compilers that run at a time.
set -euo pipefail
shopt -s inherit_errexit
cd "$(dirname "$0")/.."

build=build
inside=false
embedded_only=false
quick=false
platform=offscreen
given=("$@")
while (($#)); do
    case $1 in
        --build) build=$2; shift ;;
        --xcb) platform=xcb ;;
        --embedded) embedded_only=true ;;
        --quick) quick=true ;;
        --inside) inside=true ;; # beside the server and the screen that an outer run has started
        *) sed -n 2,6p "$0" >&2; exit 2 ;;
    esac
    shift
done

if ! $inside; then
    cmake -S . -B "$build" -G Ninja >/dev/null
    ninja -C "$build" ${BENCH_JOBS:+-j"$BENCH_JOBS"} --quiet benches
    run=(bench/run.sh "${given[@]}" --inside)
    $embedded_only || run=(scripts/with_postgresql.sh "${run[@]}")
    [[ $platform == offscreen ]] || run=(scripts/with_screen.sh "${run[@]}")
    exec "${run[@]}"
fi

export QT_QPA_PLATFORM=$platform ORVO_THEME=light
export QT_LOGGING_RULES="default.warning=false" # the plug-in that draws in memory complains of each window
root=$(realpath "$build")/bench
bin=$root/bin
orvo_db=$(realpath "$build")/bin/orvo_db
maker=$(sha1sum <"$orvo_db")
work=$root/work-$$
samples=$root/samples.txt
mkdir -p "$work"
trap 'rm -rf "$work"' EXIT
: >"$samples.new"

sizes=(10000 50000 100000 200000)
one_percent=고 some=김 all=%
searches=("$one_percent:25" "$some:15" "$all:11")
rounds=4 searches_of_growth=5 clicks=100 starts=20 peaks=3 files=9
openings=10 saves=50 queues=3 pdfs=5
if $quick; then
    searches=("$one_percent:3" "$some:2" "$all:1")
    rounds=1 searches_of_growth=2 clicks=40 starts=4 peaks=1 files=1
    openings=4 saves=10 queues=1 pdfs=1
fi

say() { echo "$(date +%T) $*" >&2; }

# Prints the folder of a register, which is made where it is missing or another tool made it. Those of the embedded
# engine stay for the next run.
register() { # engine members
    local engine=$1 members=$2 home=$root/registers/$2
    if [[ $engine == postgresql ]]; then
        home=$work/postgresql-$members
    fi
    if [[ ! -e $home/made || $(<"$home/made") != "$maker" ]]; then
        say "making a register of $members members, $engine"
        rm -rf "$home"
        mkdir -p "$home/conf"
        if [[ $engine == postgresql ]]; then
            local host=${ORVO_TEST_POSTGRESQL#*host=} port=${ORVO_TEST_POSTGRESQL#*port=} user=${ORVO_TEST_POSTGRESQL#*user=}
            printf '%s\n' "[SERVER]" engine=postgresql "host=${host%% *}" "port=${port%% *}" "user=${user%% *}" \
                "database=orvo_$members" "mail_database=orvo_mail_$members" tls=prefer >"$home/conf/connection.ini"
            chmod 600 "$home/conf/connection.ini"
            "$orvo_db" --home "$home" init --create-databases >/dev/null 2>&1
        fi
        "$orvo_db" --home "$home" demo --members "$members" --seed 1 --today 20260101 >/dev/null
        if [[ $engine == postgresql ]]; then
            # Nothing is to start by itself while the clock runs.
            psql -q "$ORVO_TEST_POSTGRESQL dbname=orvo_$members" -c "vacuum (analyze, freeze)" -c "checkpoint"
        fi
        echo "$maker" >"$home/made"
    fi
    echo "$home"
}

# Makes the program folder a copy of a register's, so that what a run leaves behind does not change the next one.
export ORVO_HOME=$work/home
move_in() { # engine members
    local register
    register=$(register "$1" "$2")
    rm -rf "$ORVO_HOME"
    cp -r "$register" "$ORVO_HOME"
}

at_work() { # engine members arguments...
    local engine=$1 members=$2
    shift 2
    move_in "$engine" "$members"
    cp "$ORVO_HOME/orvo.mdb" "$work/floor.mdb"
    rm -f "$work"/floor.mdb-*
    local server=$ORVO_HOME/orvo_db.sqlite
    [[ $engine == embedded ]] || server="postgresql:$ORVO_TEST_POSTGRESQL dbname=orvo_$members"
    "$bin/bench_work" --engine "$engine" --members "$members" --floor-server "$server" \
        --floor-local "$work/floor.mdb" "$@" >>"$samples.new"
}

# The client and the floor save the same members, so each has a copy of the register for itself. All of it runs on one
# processor: whether an answer wakes the same one or another makes twice the difference that the client makes, and falls
# to either of the two by chance.
saves() { # engine
    local server=$ORVO_HOME/orvo_db.sqlite floor=$work/floor.sqlite copy postmaster=
    local processors one
    processors=$(taskset -cp $$)
    processors=${processors##*: }
    one=${processors%%[-,]*}
    move_in "$1" 100000
    rm -f "$work"/saves.mdb*
    if [[ $1 == embedded ]]; then
        rm -f "$floor"*
        cp "$server" "$floor"
    else
        for copy in orvo_client orvo_floor; do
            psql -q "$ORVO_TEST_POSTGRESQL" -c "set client_min_messages=warning" -c "drop database if exists $copy" \
                -c "create database $copy template orvo_100000" -c checkpoint
        done
        sed -i 's/^database=.*/database=orvo_client/' "$ORVO_HOME/conf/connection.ini"
        server="postgresql:$ORVO_TEST_POSTGRESQL dbname=orvo_client"
        floor="postgresql:$ORVO_TEST_POSTGRESQL dbname=orvo_floor"
        postmaster=$(psql -Atc "select split_part(pg_read_file('postmaster.pid'), E'\n', 1)" "$ORVO_TEST_POSTGRESQL")
        taskset -cp "$one" "$postmaster" >/dev/null
    fi
    taskset -c "$one" "$bin/bench_saves" --engine "$1" --members 100000 --server "$server" \
        --floor-server "$floor" --floor-local "$work/saves.mdb" --name "$one_percent" --openings "$openings" \
        --saves "$saves" >>"$samples.new"
    [[ -z $postmaster ]] || taskset -cp "$processors" "$postmaster" >/dev/null
}

receipts() { # engine files
    say "receipts, $1"
    move_in "$1" 100000
    "$bin/bench_receipts" "$1" 100000 "$work" "$queues" "$2" >>"$samples.new"
    [[ $1 == postgresql ]] || return 0
    cp "$ORVO_HOME/orvo.mdb" "$work/floor.mdb"
    rm -f "$work"/floor.mdb-*
    "$bin/bench_receipt_queue" 100000 "$ORVO_TEST_POSTGRESQL dbname=orvo_100000" "$work/floor.mdb" \
        $((queues * 3)) >>"$samples.new"
}

measure() { # engine
    local engine=$1 members round
    local -a order=("${sizes[@]}")
    say "searches, $engine"
    at_work "$engine" 100000 "${searches[@]/#/--search=search:}"
    for ((round = 1; round <= peaks; round++)); do
        at_work "$engine" 100000 --peak "$all"
    done
    for ((round = 1; round <= rounds; round++)); do
        say "clicks, pages and growth, $engine, round $round of $rounds"
        for members in "${order[@]}"; do
            at_work "$engine" "$members" --search "growth:$one_percent:$searches_of_growth" --clicks "$clicks" \
                --seed "$round"
        done
        # There and back, so that a machine that slows down in between does not look like growth.
        mapfile -t order < <(printf '%s\n' "${order[@]}" | tac)
    done
    say "saves, $engine"
    for ((round = 1; round <= rounds; round++)); do
        saves "$engine"
    done
}

# A window that comes while the window manager starts can be lost.
[[ $platform == offscreen ]] || sleep 2
load=$(cut -d ' ' -f 1 /proc/loadavg)
say "starts"
move_in embedded 100000
"$bin/bench_spawn" "$starts" "$bin/bench_start" "$bin/bench_bare_window" >>"$samples.new"
say "workbooks and CSVs"
"$bin/bench_files" "$work" "$files" >>"$samples.new"
engines=(embedded)
$embedded_only || engines+=(postgresql)
for engine in "${engines[@]}"; do
    measure "$engine"
    receipts "$engine" "$([[ $engine == embedded ]] && echo "$pdfs" || echo 0)"
done
mv "$samples.new" "$samples"

result=0
"$bin/bench_table" "${engines[@]}" <"$samples" >"$root/table.md" || result=$?
echo "- Drawn by the plug-in $platform, on $(nproc) cores; load before $load, after $(cut -d ' ' -f 1 /proc/loadavg)" \
    >>"$root/table.md"
cat "$root/table.md"
exit "$result"
