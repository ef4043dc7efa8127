#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Runs a command in a sandbox that holds OBS 32 and all tools, after whatever set-up is missing.
# The project is the one writable folder of the host's there, the network is a loopback of its own,
# and its root user may bind every port and add addresses, even if an ordinary user started it.
# Usage: sandbox.sh [--display] COMMAND [ARGUMENT…]
#   --display   gives the command the user's display, if there is one; otherwise HEADLESS=1 is set.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source=scripts/lib.sh
source "$here/lib.sh"

runtime=/run/tallyforge

paths() {
    project=$(dirname "$here")
    root=$("$here/root.sh")
    ccache=$(cache_folder)/ccache
    if [[ $root == / ]]; then
        inner_home=$HOME inner_project=$project inner_ccache=$ccache
    else
        inner_home=/home/tallyforge inner_project=/src inner_ccache=/ccache
        # Held to the end of the run, so that no other set-up removes the root under it.
        exec 9<"$root"
        flock --shared 9
    fi
    mkdir -p "$ccache"
}

mounts_and_rights() {
    arguments=(
        --ro-bind "$root" / --dev /dev --proc /proc --ro-bind /proc/sys /proc/sys
        --perms 1777 --tmpfs /tmp --tmpfs /run --tmpfs "$inner_home"
        --perms 1777 --dir /tmp/.X11-unix --perms 0700 --dir "$runtime"
        # A run may install certificate authorities that it alone trusts.
        --tmpfs /etc/ssl/certs
        --bind "$project" "$inner_project" --bind "$ccache" "$inner_ccache"
        --chdir "$inner_project" --unshare-pid --unshare-net --die-with-parent --cap-drop ALL
    )
    # An ordinary user is root inside too: both see the same rights, and tests the same results.
    ((EUID == 0)) || arguments+=(--unshare-user --uid 0 --gid 0)
    local right # SETFCAP lets a test that needs mounts be root in a namespace of its own
    for right in DAC_OVERRIDE CHOWN FOWNER KILL SETFCAP SYS_PTRACE NET_BIND_SERVICE NET_ADMIN NET_RAW; do
        arguments+=(--cap-add "CAP_$right")
    done
}

environment() {
    arguments+=(--clearenv)
    local pair name
    for pair in PATH=/usr/bin:/usr/sbin:/bin:/sbin HOME="$inner_home" LC_ALL=C.UTF-8 \
        XDG_RUNTIME_DIR=$runtime LIBGL_ALWAYS_SOFTWARE=1 PYTHONPYCACHEPREFIX=/tmp/pycache \
        CCACHE_DIR="$inner_ccache" CCACHE_BASEDIR="$inner_project" CCACHE_MAXSIZE=2G \
        CCACHE_SLOPPINESS=pch_defines,time_macros \
        TALLYFORGE_ROOT="$root"; do
        arguments+=(--setenv "${pair%%=*}" "${pair#*=}")
    done
    for name in CI TERM VERBOSE "${!BENCH_@}" "${!CHECK_@}" "${!CTEST_@}" "${!FUZZ_@}" "${!SOAK_@}"; do
        [[ -z ${!name:-} ]] || arguments+=(--setenv "$name" "${!name}")
    done
}

# The sockets of the user's display; fails when there is none that a sandbox can reach.
share_display() {
    local found='' number socket cookie
    number=${DISPLAY:-}
    number=${number#unix}
    number=${number%%.*}
    socket=/tmp/.X11-unix/X${number#:}
    if [[ $number == :* && -S $socket ]]; then
        found=1
        arguments+=(--bind "$socket" "$socket" --setenv DISPLAY "$number")
        cookie=${XAUTHORITY:-$HOME/.Xauthority}
        if [[ -r $cookie ]]; then
            arguments+=(--ro-bind "$cookie" "$runtime/Xauthority"
                --setenv XAUTHORITY "$runtime/Xauthority")
        fi
    fi
    socket=${WAYLAND_DISPLAY:-}
    [[ $socket == /* ]] || socket=${XDG_RUNTIME_DIR:-/nowhere}/$socket
    if [[ -n ${WAYLAND_DISPLAY:-} && -S $socket ]]; then
        found=1
        arguments+=(--bind "$socket" "$runtime/wayland-0" --setenv WAYLAND_DISPLAY wayland-0)
    fi
    [[ -n $found ]]
}

# Files that root wrote into somebody's project become theirs.
give_back() {
    local owner
    owner=$(stat -c %u:%g "$project")
    [[ $owner == 0:* ]] || find "$project" -xdev -user 0 -exec chown -h "$owner" {} +
}

wants_display=
if [[ ${1:-} == --display ]]; then
    wants_display=1
    shift
fi
(($#)) || fail "Usage: sandbox.sh [--display] COMMAND [ARGUMENT…]"

paths
"$here/host-packages.sh" bwrap:bubblewrap
mounts_and_rights
environment
if [[ -z $wants_display ]] || ! share_display; then
    # An X server shares memory with its clients, so only a run without one gets an IPC of its own.
    arguments+=(--unshare-ipc --setenv HEADLESS 1)
fi

if [[ $EUID == 0 && $(stat -c %u "$project") != 0 ]]; then
    trap give_back EXIT
    bwrap "${arguments[@]}" -- "$@"
else
    exec bwrap "${arguments[@]}" -- "$@"
fi
