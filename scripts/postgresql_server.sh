# shellcheck shell=bash
# Sourced by scripts that run a PostgreSQL server of their own, on a free port of the loopback interface:
#   make_server SETTING...   makes its files and starts it; ORVO_TEST_POSTGRESQL then tells how to connect, and
#                            ORVO_TEST_AUTHORITY which authority answers for it
#   let_server_fall          for a moment it stores what it is sent and answers nothing; then all its processes end on
#                            the spot, as with a machine that falls
#   start_server             starts it again, where it was
#   remove_server            stops it if it runs, and takes its files away; to be called whatever happened
#   whatever_happens NAME    lets that function be called at the end of the script, signals included

server_folder=
server_port=
server_settings=()

run_as_server() {
    (cd "$server_folder" && "${as_server[@]}" "$@")
}

run_server_program() {
    run_as_server "$server_programs/$1" -D "$server_folder/data" "${@:2}"
}

start_server() {
    local settings="-p $server_port -c ssl=on -c listen_addresses=127.0.0.1 -c unix_socket_directories=''"
    run_server_program pg_ctl -l "$server_folder/server.log" -w -t 60 \
        -o "$settings ${server_settings[*]/#/-c }" start >/dev/null 2>&1
}

make_server() {
    server_settings=("$@")
    server_programs=$(find /usr/lib/postgresql -maxdepth 2 -name bin 2>/dev/null | sort -V | tail -n 1)
    [[ -x $server_programs/initdb ]] || { echo "There is no PostgreSQL server on this machine." >&2; return 1; }
    server_folder=$(mktemp -d -t orvo-postgresql-XXXXXX)
    chmod 755 "$server_folder"
    as_server=()
    if ((EUID == 0)); then # the server refuses to run as root
        chown postgres: "$server_folder"
        as_server=(runuser -u postgres --)
    fi
    if ! run_server_program initdb -U postgres -A trust -E UTF8 --locale=C.UTF-8 --no-sync \
        >"$server_folder/log" 2>&1; then
        cat "$server_folder/log" >&2
        return 1
    fi
    # It offers TLS, as a register's server does, with a certificate by an authority of its own.
    local of_elliptic=(-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    if ! { run_as_server openssl req -x509 "${of_elliptic[@]}" -days 2 -subj /CN=authority \
        -keyout data/root.key -out root.crt &&
        run_as_server openssl req "${of_elliptic[@]}" -subj /CN=server -addext subjectAltName=IP:127.0.0.1 \
            -keyout data/server.key -out data/server.csr &&
        run_as_server openssl x509 -req -in data/server.csr -CA root.crt -CAkey data/root.key -CAcreateserial \
            -copy_extensions copy -days 2 -out data/server.crt; } >"$server_folder/log" 2>&1; then
        cat "$server_folder/log" >&2
        return 1
    fi
    # A port can be taken between the look and the start, so the start itself decides. Below 32768 no client line of
    # the system's own takes it.
    for _ in {1..20}; do
        server_port=$((20000 + RANDOM % 12000))
        if start_server; then
            export ORVO_TEST_POSTGRESQL="host=127.0.0.1 port=$server_port user=postgres"
            export ORVO_TEST_AUTHORITY=$server_folder/root.crt
            return 0
        fi
    done
    echo "PostgreSQL does not start:" >&2
    tail -n 20 "$server_folder/server.log" >&2
    return 1
}

let_server_fall() {
    local postmaster each
    local -a all
    # It waits for a standby that does not exist before it tells anybody that his write is committed.
    psql -qAtX "$ORVO_TEST_POSTGRESQL" -c "alter system set synchronous_standby_names = 'nobody'" \
        -c "select pg_reload_conf()" >/dev/null
    sleep 0.3
    postmaster=$(head -n 1 "$server_folder/data/postmaster.pid")
    read -r -a all <"/proc/$postmaster/task/$postmaster/children" || true
    all+=("$postmaster")
    kill -KILL "${all[@]}" 2>/dev/null || true
    for each in "${all[@]}"; do
        for _ in {1..100}; do # one that nobody has buried yet is as good as gone
            grep -q '^State:[[:space:]]*[^Z[:space:]]' "/proc/$each/status" 2>/dev/null || break
            sleep 0.05
        done
    done
    rm -f "$server_folder/data/postmaster.pid"
    : >"$server_folder/data/postgresql.auto.conf"
}

remove_server() {
    [[ -n $server_folder ]] || return 0
    if [[ -e $server_folder/data/postmaster.pid ]]; then
        run_server_program pg_ctl -m immediate -w stop >/dev/null 2>&1 || true
    fi
    rm -rf "$server_folder"
}

whatever_happens() {
    # shellcheck disable=SC2064
    trap "trap '' INT TERM HUP; $1" EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    trap 'exit 129' HUP
}
