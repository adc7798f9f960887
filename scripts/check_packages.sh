#!/bin/bash
# Usage: scripts/check_packages.sh [build folder]
# Prints each installed package that a finished build takes headers or libraries from, though scripts/install.sh neither
# names it nor gets it with what it names: on a bare machine the build would stop there. Ends with 1 where there is one.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-build}
[[ -e $folder/build.ninja ]] || { echo "There is no build in $folder/" >&2; exit 2; }

# Headers as the compiler noted them, libraries as the linker is told of them: by their files, or by -l.
files_in_use() {
    ninja -C "$folder" -t deps | sed -n 's/^ \+\(\/.*\)/\1/p'
    ninja -C "$folder" -t commands | tr ' ' '\n' | sort -u >"$words"
    grep -E '^/.*\.(a|so[.0-9]*)$' "$words" || true
    sed -n 's/^-l\(.\+\)/\1/p' "$words" | while read -r name; do
        g++ -print-file-name="lib$name.so" # the bare name where there is none
    done | grep '^/' || true
}

packages_in_use() {
    # Without what a path goes back over; the last link of a library stays, as the package of its headers owns that.
    files_in_use | grep -v "^$PWD/" | sort -u | xargs -r realpath -s | sort -u | xargs -r dpkg -S 2>/dev/null |
        sed 's/: .*//; s/, /\n/g' | sed 's/:.*//' | sort -u
}

# What an installation of the named packages alone would bring: of alternatives the first that is installed here.
packages_at_hand() {
    dpkg-query -W -f '${db:Status-Status}\t${Package}\t${Provides}\t${Pre-Depends},${Depends}\n' |
        sed -E 's/ *\([^)]*\)//g; s/:(any|native|[a-z0-9]+)([,| \t]|$)/\2/g' |
        awk -F '\t' -v named="$(scripts/install.sh --list | tr '\n' ',')" '
            $1 == "installed" {
                needs[$2] = $4
                provider[$2] = $2
                for (i = split($3, all, / *, */); i > 0; --i)
                    if (!(all[i] in provider)) provider[all[i]] = $2
            }
            function bring(list,    parts, choice, i, j, found) {
                for (i = split(list, parts, / *, */); i > 0; --i) {
                    found = ""
                    for (j = split(parts[i], choice, / *\| */); j > 0; --j)
                        if (choice[j] in provider) found = provider[choice[j]]
                    if (found != "" && !(found in brought)) {
                        brought[found] = 1
                        bring(needs[found])
                    }
                }
            }
            END {
                bring(named)
                for (name in brought) print name
            }' | sort -u
}

words=$(mktemp)
trap 'rm -f "$words"' EXIT
in_use=$(packages_in_use)
at_hand=$(packages_at_hand)
[[ $in_use == *libstdc++* && $at_hand == *libstdc++* ]] || { echo "The packages in use were not found." >&2; exit 2; }
missing=$(comm -23 <(echo "$in_use") <(echo "$at_hand"))
[[ -z $missing ]] && exit 0
echo "The build uses these packages, which scripts/install.sh does not bring:"
sed 's/^/  /' <<<"$missing"
exit 1
