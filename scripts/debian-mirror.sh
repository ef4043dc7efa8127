#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Prints the address of the Debian mirror that this host's own apt sources use.
# Usage: debian-mirror.sh [APT-FOLDER]
set -euo pipefail

apt_folder=${1:-/etc/apt}

# One line for each "address suite" pair, from both formats of apt sources.
sources() {
    local file
    for file in "$apt_folder"/sources.list "$apt_folder"/sources.list.d/*.list; do
        [[ -r $file ]] && sed -nE 's/^deb[[:space:]]+(\[[^]]*\][[:space:]]*)?([^[:space:]]+)[[:space:]]+([^[:space:]]+).*/\2 \3/p' "$file"
    done
    for file in "$apt_folder"/sources.list.d/*.sources; do
        [[ -r $file ]] && awk '
            function stanza(    u, s, i, j) {
                if (types ~ /(^|[ \t])deb([ \t]|$)/ && enabled !~ /^(no|false|off|0)$/)
                    for (i = split(uris, u, " "); i > 0; i--)
                        for (j = split(suites, s, " "); j > 0; j--) print u[i], s[j]
                types = uris = suites = enabled = ""
            }
            /^#/ { next }
            /^[ \t]*$/ { stanza(); field = ""; next }
            /^[^ \t]/ { field = tolower($0); sub(/[ \t]*:.*/, "", field); sub(/^[^:]*:[ \t]*/, "") }
            field == "types" { types = types " " $0 }
            field == "uris" { uris = uris " " $0 }
            field == "suites" { suites = suites " " $0 }
            field == "enabled" { enabled = tolower($0); sub(/[ \t]+$/, "", enabled) }
            END { stanza() }' "$file"
    done
    return 0
}

# Third-party repositories may borrow the suite's name, but only Debian's own has its updates too.
debian_address() {
    sources | awk '
        $1 ~ /^(https?|file|mirror\+file):/ && $1 !~ /-security\/?$/ {
            sub(/\/+$/, "", $1)
            has[$1, $2] = 1
            if (!($1 in seen)) { seen[$1] = 1; order[++n] = $1 }
            if ($2 !~ /[\/-]/) plain[$1] = plain[$1] " " $2
        }
        END {
            for (i = 1; i <= n; i++) {
                m = split(plain[order[i]], suites, " ")
                for (j = 1; j <= m; j++) {
                    if ((order[i], suites[j] "-updates") in has) { print order[i]; exit }
                    if (!guess && order[i] ~ /\/debian$/) guess = order[i]
                }
            }
            if (guess) print guess
        }'
}

address=$(debian_address)
# Cloud images name a file that lists the mirrors.
if [[ $address == mirror+file:* ]]; then
    list=${address#mirror+file:}
    [[ -r $list ]] || exit 1
    address=$(awk '!/^#/ && NF { sub(/\/+$/, "", $1); print $1; exit }' "$list")
fi
[[ -n $address ]] || exit 1
printf '%s\n' "$address"
