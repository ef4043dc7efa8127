#!/bin/sh
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Runs a command with a network, devices and trusted certificate authorities of its own, so that
# several that use the same ports and the same /dev/ttyACM0 can run at once.
# Usage: alone.sh COMMAND [ARGUMENT…]
set -eu
if [ "${1:-}" != --inside ]; then
    exec unshare --map-root-user --mount --net "$0" --inside "$@"
fi
shift
ip link set lo up
mount -t tmpfs none /etc/ssl/certs
devices=$(mktemp -d)
mount -t tmpfs none "$devices"
for name in null zero full random urandom tty; do
    : >"$devices/$name"
    mount --bind "/dev/$name" "$devices/$name"
done
mkdir "$devices/pts" "$devices/shm"
mount --bind /dev/pts "$devices/pts"
mount -t tmpfs none "$devices/shm"
ln -s pts/ptmx "$devices/ptmx"
ln -s /proc/self/fd "$devices/fd"
mount --move "$devices" /dev
rmdir "$devices"
exec "$@"
