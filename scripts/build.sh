#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Configures a preset when that is needed, and builds it, or only some of its targets. Runs inside
# the sandbox.
# Usage: build.sh PRESET [TARGET…]
set -euo pipefail

preset=$1
shift
folder=build/$preset
# A build folder serves one compiler and one place: elsewhere it starts afresh.
configured_in="${TALLYFORGE_ROOT:?build.sh runs inside scripts/sandbox.sh} $PWD"
stamp=$folder/.configured-in

if [[ ! -f $folder/build.ninja || CMakePresets.json -nt $stamp || $(<"$stamp") != "$configured_in" ]] 2>/dev/null; then
    fresh=()
    [[ -f $stamp && $(<"$stamp") == "$configured_in" ]] || fresh=(--fresh)
    cmake --preset "$preset" "${fresh[@]}"
    printf '%s\n' "$configured_in" >"$stamp"
fi
cmake --build --preset "$preset" ${1:+--target "$@"}
