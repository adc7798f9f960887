#!/bin/bash
# Installs what a build, the tests and the screen need and the machine does not have yet.
set -euo pipefail

build=(g++ cmake ninja-build ccache pkg-config git qt6-base-dev qt6-base-dev-tools qt6-svg-dev
       qt6-translations-l10n libsqlite3-dev libpq-dev libxlsxwriter-dev unixodbc-dev)
tests=(freetds-bin openssl poppler-utils postgresql-15 tdsodbc odbcinst)
screen=(fonts-nanum fonts-noto-cjk xvfb openbox)

wanted=("${build[@]}" "${tests[@]}" "${screen[@]}")
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
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 \
        -o Dpkg::Use-Pty=0 "$@"
}

echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { apt update && apt install --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    exit 1
fi
