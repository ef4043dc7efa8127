#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# All checks that need no test run. Each says what it looked at; none passes without having looked
# at anything. Runs inside the sandbox. CHECK_TIDY_SECONDS (240) bounds the slow one.
set -uo pipefail

failed=()

# check NAME COMMAND…: runs it, and remembers a failure.
check() {
    local name=$1
    shift
    "$@" || {
        echo "check: $name FAILED"
        failed+=("$name")
    }
}

# list_files KIND: fills the array files, which must not be empty.
list_files() {
    mapfile -t files < <(scripts/sources.sh "$1")
    ((${#files[@]})) || {
        echo "no $1 files were found"
        return 1
    }
}

check_format() {
    local files
    list_files cpp && clang-format --dry-run --Werror "${files[@]}" &&
        echo "check: format: ${#files[@]} files as clang-format would have them"
}

check_warnings() {
    scripts/build.sh dev && echo "check: warnings: the build has none"
}

check_licences() {
    local files kind without bare=()
    for kind in cpp python shell; do
        list_files "$kind" || return
        mapfile -t without < <(grep -L 'SPDX-License-Identifier: GPL-2.0-or-later' "${files[@]}")
        bare+=("${without[@]}")
    done
    ((${#bare[@]} == 0)) || {
        printf '%s: no licence header\n' "${bare[@]}"
        return 1
    }
    echo "check: licence headers: every source file has one"
}

check_shell() {
    local files file
    list_files shell || return
    for file in "${files[@]}"; do
        bash -n "$file" || return
    done
    echo "check: shell: ${#files[@]} files parse"
}

check format check_format
check includes python3 scripts/check_includes.py
check licences check_licences
check python python3 scripts/check_python.py
check shell check_shell
check translations python3 scripts/check_translations.py
check messages python3 scripts/check_messages.py
check warnings check_warnings
check tidy python3 scripts/check_tidy.py

if ((${#failed[@]})); then
    echo "check: failed: ${failed[*]}"
    exit 1
fi
echo "check: all passed"
