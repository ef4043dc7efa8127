# shellcheck shell=bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Functions that the set-up scripts share. Messages go to stderr: stdout is for results.
say() { printf '[set-up%s] %s\n' "${step:+ $step}" "$*" >&2; }

fail() {
    printf '[set-up] %s\n' "$*" >&2
    exit 1
}

have() { command -v "$1" >/dev/null 2>&1; }

# Under sudo, HOME may still be the invoking user's, whose cache root must not fill.
cache_folder() {
    local base=${XDG_CACHE_HOME:-}
    if [[ -z $base && $EUID == 0 ]]; then
        base=~root/.cache
    fi
    printf '%s/tallyforge\n' "${base:-$HOME/.cache}"
}
