#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Prints the folder to use as / for building and running: "/" where this host has an OBS 32 and all
# tools itself, otherwise a cached Debian root, which is made on first use.
# Usage: root.sh [--say-cache]
#   --say-cache   only says where the cache is and how it is removed.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source=scripts/lib.sh
source "$here/lib.sh"

# The recipe: a change here makes a new root.
suite=forky
packages=(
    g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-connectivity-dev qt6-l10n-tools
    qt6-tools-dev libobs-dev libssl-dev
    obs-studio obs-plugins libgl1-mesa-dri fonts-dejavu-core
    xvfb xauth openbox x11-apps xdotool imagemagick
    python3-websockets python3-dbusmock dbus-daemon openssl ca-certificates procps iproute2
    clang clang-tidy clang-format libclang-rt-dev clazy gdb strace
    netcat-openbsd nodejs mosquitto ncat curl
    libarchive-tools unzip 7zip
)
options=(
    --variant=minbase
    # A mirror's copy of testing may be weeks old. Signatures are checked all the same.
    '--aptopt=Acquire::Check-Valid-Until "false"'
    '--aptopt=Acquire::http::Timeout "30"'
    '--dpkgopt=path-exclude=/usr/share/man/*'
    '--dpkgopt=path-exclude=/usr/share/locale/*'
)
# The root is used read-only, so the folders to mount over must be there.
mount_points=(src ccache home/tallyforge)

needed_mb=3000
cache=$(cache_folder)
recipe=$(printf '%s\n' "$suite" "${packages[@]}" "${options[@]}" "${mount_points[@]}" | sha256sum)
root=$cache/root-${recipe:0:12}
making=$cache/making
log=$cache/set-up.log
worker=

host_is_enough() {
    local tool
    for tool in pkg-config bwrap obs cmake ninja ccache g++ clang++ clang-tidy clang-format \
        Xvfb openbox xdotool convert openssl ip python3 dbus-daemon nc node curl bsdtar unzip 7z \
        strace; do
        have "$tool" || return 1
    done
    pkg-config --atleast-version=32 libobs &&
        pkg-config --atleast-version=3 libcrypto &&
        pkg-config --atleast-version=6.8 Qt6Core && # given both, it looks at the first alone
        pkg-config --atleast-version=6.8 Qt6Bluetooth &&
        [[ -x $(pkg-config --variable=bindir Qt6Core)/lupdate ]] &&
        [[ -d $(pkg-config --variable=libdir Qt6Core)/cmake/Qt6LinguistTools ]] &&
        python3 -c 'import dbusmock, websockets' 2>/dev/null
}

# Sets as_root, a prefix that runs a command as root, real or mapped, with mounts and processes in
# namespaces of its own. They end with it however it ends, so nothing stays mounted in a root.
set_as_root() {
    as_root=(unshare --mount --pid --kill-child)
    [[ $EUID != 0 ]] || return 0
    as_root+=(--map-root-user --map-auto)
    local file
    for file in /etc/subuid /etc/subgid; do
        grep -qsE "^($(id -un)|$EUID):" "$file" ||
            fail "Please run 'usermod --add-subuids 100000-165535 --add-subgids 100000-165535 $(id -un)' as root, then start this again: making a Debian root as an ordinary user takes more user ids."
    done
}

remove() { "${as_root[@]}" rm -rf --one-file-system -- "$@"; }

check_space() {
    local free_mb
    free_mb=$(df --output=avail -BM "$cache" | tail -n 1 | tr -dc 0-9)
    ((free_mb >= needed_mb)) ||
        fail "Not enough space in $cache: $free_mb MB are free, $needed_mb MB are needed (XDG_CACHE_HOME can name another place)."
}

stop_worker() {
    [[ -n $worker ]] || return 0
    kill -KILL "$worker" 2>/dev/null || true
    wait "$worker" 2>/dev/null || true
    worker=
}

interrupted() {
    trap '' INT TERM HUP
    stop_worker
    remove "$making"
    printf '\n' >&2
    fail "Interrupted. Nothing is left half done: the next run starts this step again."
}

progress() {
    awk '
        / newly installed/ { for (i = 2; i <= NF; i++) if ($i == "newly") total += $(i - 1) }
        /^Get:/ { fetched++ }
        /^Unpacking / { unpacked++ }
        /^Setting up / { ready++ }
        END {
            if (!total) print "fetching the package lists"
            else if (!unpacked) print "downloading", total, "packages, at", fetched
            else printf "%d packages unpacked, %d set up\n", unpacked, ready
        }' "$log"
}

explain_failure() {
    local reason
    reason=$(grep -E '^E: ' "$log" | head -n 1 || true)
    if grep -qiE 'no space left on device|enough free space' "$log"; then
        fail "The disk filled up: free about $needed_mb MB for $cache and start again (log: $log)."
    elif grep -qiE 'could not (resolve|connect)|temporary failure resolving|unable to connect|unreachable|connection (refused|timed out|failed)' "$log"; then
        fail "The Debian mirror $mirror can't be reached: start again when there is a network (log: $log)."
    fi
    fail "Making the root failed: ${reason:-no reason given} (log: $log)."
}

# The host may reach its mirror through a proxy of apt's own.
proxy_option() {
    local proxy
    eval "$(apt-config shell proxy Acquire::http::Proxy)"
    [[ -z ${proxy:-} ]] || printf -- '--aptopt=Acquire::http::Proxy "%s"\n' "$proxy"
}

make_root() {
    local started=$SECONDS proxy_option
    proxy_option=$(proxy_option)
    mkdir -p "$making/root" "$making/tmp"
    # In a temporary folder of its own, so that nothing of a killed run stays in the host's.
    TMPDIR=$making/tmp setpriv --pdeathsig KILL "${as_root[@]}" mmdebstrap --mode=root --verbose \
        "${options[@]}" ${proxy_option:+"$proxy_option"} --include="${packages[*]}" \
        "$suite" "$making/root" "$mirror" </dev/null >"$log" 2>&1 &
    worker=$!
    while kill -0 "$worker" 2>/dev/null; do
        timeout 5 tail -s 0.2 --pid="$worker" -f /dev/null &
        wait $! || true
        say "$((SECONDS - started)) s: $(progress)"
    done
    if ! wait "$worker"; then
        worker=
        remove "$making"
        explain_failure
    fi
    worker=
    (cd "$making/root" && mkdir -p "${mount_points[@]}")
}

try_root() {
    local seen
    seen=$(bwrap --ro-bind "$making/root" / --dev /dev --proc /proc --tmpfs /tmp --unshare-net \
        --clearenv --setenv PATH /usr/bin:/bin --setenv LC_ALL C.UTF-8 sh -ec '
            libobs=$(pkg-config --modversion libobs)
            qt=$(pkg-config --modversion Qt6Core)
            compiler=$(g++ -dumpfullversion)
            command -v obs Xvfb cmake ninja clang-tidy >/dev/null
            echo "libobs $libobs, Qt $qt, g++ $compiler"' 2>>"$log") || {
        remove "$making"
        fail "The new root doesn't run: $(tail -n 1 "$log") (log: $log)."
    }
    say "It runs: $seen."
}

# Another checkout with another recipe may be running in its root right now: then it stays.
remove_older_roots() {
    local old
    for old in "$cache"/root-*; do
        [[ $old != "$root" && -d $old ]] || continue
        if flock --nonblock --exclusive "$old" true; then
            say "Removing the root of an older recipe, $old…"
            remove "$old"
        fi
    done
}

set_up() {
    local step=1/3
    say "A Debian root with OBS 32 is made in $cache: once, about 2 GB and 2 minutes."
    local wanted=(mmdebstrap:mmdebstrap bwrap:bubblewrap)
    # mmdebstrap merely recommends the program that maps an ordinary user's ids.
    [[ $EUID == 0 ]] || wanted+=(newuidmap:uidmap)
    "$here/host-packages.sh" "${wanted[@]}"
    mirror=${TALLYFORGE_MIRROR:-$("$here/debian-mirror.sh")} ||
        fail "No Debian mirror stands in this host's apt sources: TALLYFORGE_MIRROR=ADDRESS can name one."
    local -a as_root
    set_as_root
    trap interrupted INT TERM HUP
    remove "$making"
    check_space
    step=2/3
    say "Fetching and unpacking Debian $suite from $mirror…"
    make_root
    step=3/3
    say "Trying it…"
    try_root
    mv "$making/root" "$root"
    remove "$making"
    trap - INT TERM HUP
    remove_older_roots
    say "Done: $root ($(du -sm "$root" 2>/dev/null | cut -f 1) MB)."
}

if [[ ${1:-} == --say-cache ]]; then
    # An ordinary user's root holds files of mapped ids, which only a mapped root may remove.
    as_root=''
    ((EUID == 0)) || as_root='unshare --map-root-user --map-auto '
    [[ ! -d $cache ]] || echo "The set-up in $cache stays; to remove it: ${as_root}rm -rf $cache"
    exit
fi
if [[ -d $root ]]; then
    printf '%s\n' "$root"
    exit
fi
if host_is_enough; then
    printf '/\n'
    exit
fi
mkdir -p "$cache" || fail "Can't make the folder $cache."
exec 8>"$cache/lock"
if ! flock --nonblock 8; then
    say "Another set-up is at work; waiting for it to finish…"
    flock 8
fi
[[ -d $root ]] || set_up
printf '%s\n' "$root"
