#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Puts a built plug-in into the user's own OBS folder; under sudo, into the invoking user's.
# Usage: install.sh BUILT-FOLDER
set -euo pipefail

built=$1
[[ -f $built/bin/64bit/tallyforge-obs.so ]] || { echo "install: $built holds no plug-in"; exit 1; }

home=$HOME configuration=${XDG_CONFIG_HOME:-}
if [[ $EUID == 0 && -n ${SUDO_USER:-} ]]; then
    home=$(getent passwd "$SUDO_USER" | cut -d : -f 6)
    configuration=
fi
plugins=${configuration:-$home/.config}/obs-studio/plugins

# As the invoking user, so that every folder on the way is theirs too.
as_user=()
if [[ $EUID == 0 && -n ${SUDO_UID:-} ]]; then
    as_user=(setpriv --reuid "$SUDO_UID" --regid "$SUDO_GID" --clear-groups)
fi

target=$plugins/tallyforge-obs
# Not below plugins/: OBS would take them for plug-ins when it starts in between.
new=${plugins%/plugins}/tallyforge-obs.new
old=${plugins%/plugins}/tallyforge-obs.old
tar -C "$built" -cf - . | "${as_user[@]}" sh -euc '
    mkdir -p "$2"
    rm -rf "$3" "$4"
    mkdir "$3"
    tar -C "$3" -xf - --no-same-owner
    if [ -e "$1" ]; then mv "$1" "$4"; fi
    mv "$3" "$1"
    rm -rf "$4"' sh "$target" "$plugins" "$new" "$old"
echo "Installed in $target. It is there when OBS starts the next time."

missing=$(ldd "$target/data/tallyforge-bluetooth-helper" 2>/dev/null | grep 'not found' || true)
if [[ $missing == *libQt6Bluetooth*"=> not found"* ]]; then
    echo "Note: setting devices up over Bluetooth needs Qt's Bluetooth library, which is missing here (Debian: libqt6bluetooth6)."
elif [[ -n $missing ]]; then
    echo "Note: setting devices up over Bluetooth needs libraries that this computer doesn't have: $missing"
fi

# "OBS Studio - 32.0.4 (…)" or "OBS Studio - 30.2.3+dfsg-3".
version=$(obs --version 2>/dev/null | grep -oE '[0-9]+(\.[0-9]+)+' | head -n 1 || true)
if [[ -z $version || ${version%%.*} -lt 32 ]]; then
    echo "Note: it needs OBS 32 or newer with Qt 6.8 or newer; the OBS on this computer is ${version:-missing or not in PATH}."
fi
