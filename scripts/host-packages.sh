#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Installs those host programs among the arguments' packages that are missing.
# Usage: host-packages.sh PROGRAM:PACKAGE…
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source=scripts/lib.sh
source "$here/lib.sh"

packages=()
for pair in "$@"; do
    have "${pair%%:*}" || packages+=("${pair#*:}")
done
((${#packages[@]})) || exit 0

command_line="apt-get install ${packages[*]}"
have apt-get || fail "This needs the programs of the packages ${packages[*]}: please install them."

as_root=()
if [[ $EUID != 0 ]]; then
    have sudo || fail "Please run '$command_line' as root, then start this again: there is no sudo here."
    as_root=(sudo)
    # Nobody could answer sudo's question.
    [[ -t 0 ]] || as_root=(sudo -n)
    say "The host packages ${packages[*]} are missing; sudo is asked to install them."
    "${as_root[@]}" true 2>/dev/null ||
        fail "Please run '$command_line' as root, then start this again: sudo didn't allow it."
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${packages[@]}" </dev/null >"$log" 2>&1
}

say "Installing the host packages ${packages[*]} with apt-get…"
# Package lists may be absent, or so old that the mirror no longer has the versions they name.
if ! install; then
    say "Fetching apt's package lists first…"
    "${as_root[@]}" apt-get update </dev/null >"$log" 2>&1 || true
    # Why the lists couldn't be fetched says more than which package is then missing.
    reason=$(grep -E '^[EW]: ' "$log" | head -n 1 || true)
    if ! install; then
        reason=${reason:-$(grep -E '^E: ' "$log" | head -n 1 || true)}
        fail "apt-get couldn't install ${packages[*]}, for lack of a network or of space perhaps: ${reason:-no reason given}"
    fi
fi
