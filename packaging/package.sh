#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Builds the plug-in for users from scratch and packs it. Runs inside the sandbox.
# Usage: package.sh [--merge MANIFEST] [CMAKE-OPTION…]
set -euo pipefail

merge=()
if [[ ${1:-} == --merge ]]; then
    merge=(--merge "$2")
    shift 2
fi
out=build/package
# A folder of its own: no option of an earlier build gets into a release.
work=$out/work
rm -rf "$work"
mkdir -p "$work"
cmake --preset release -B "$work" "$@" >"$work/configure.log" || { cat "$work/configure.log"; exit 1; }
cmake --build "$work"
cmake --install "$work" --prefix "$work/stage/tallyforge-obs" >"$work/install.log"
exec python3 packaging/package.py --plugin "$work/stage/tallyforge-obs" \
    --facts "$work/packaging/tallyforge-release-facts" --out "$out" --changes CHANGES.md "${merge[@]}"
