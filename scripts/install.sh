#!/bin/bash
# Usage: scripts/install.sh [--list]
# Installs what a build, the tests and the screen need and the machine does not have yet; or lists all of it.
set -euo pipefail

build=(g++ cmake ninja-build ccache pkg-config git qt6-base-dev qt6-base-dev-tools qt6-svg-dev
       qt6-translations-l10n libsqlite3-dev libpq-dev libxlsxwriter-dev unixodbc-dev zlib1g-dev)
tests=(freetds-bin openssl poppler-utils postgresql-15 tdsodbc odbcinst)
screen=(fonts-nanum fonts-noto-cjk xvfb openbox)

wanted=("${build[@]}" "${tests[@]}" "${screen[@]}")
if [[ ${1:-} == --list ]]; then
    printf '%s\n' "${wanted[@]}"
    exit 0
fi
mapfile -t missing < <(
    comm -23 <(printf '%s\n' "${wanted[@]}" | sort) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/^installed //p' | sort -u)
)
((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "Neither root nor sudo: install these packages first: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
longest_wait=300 # seconds, for another apt to end
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -q -y -o DPkg::Lock::Timeout=$longest_wait \
        -o Dpkg::Use-Pty=0 "$@"
}

echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Another apt's lock on the lists is not waited for, unlike that on the packages.
update() {
    local until=$((SECONDS + longest_wait))
    until apt update >"$log" 2>&1; do
        if ! grep -q 'Could not get lock' "$log" || ((SECONDS > until)); then
            return 1
        fi
        sleep 2
    done
}
if ! { update && apt install --no-install-recommends "${missing[@]}" >"$log" 2>&1; }; then
    tail -n 40 "$log" >&2
    exit 1
fi
