# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Checks that helper/ and every folder of src/ include only what they may know."""

import pathlib
import re
import sys

SOURCE, HELPER = pathlib.Path("src"), pathlib.Path("helper")

# A carrier below device/ knows the device and nothing of another carrier.
CARRIER = {"device", "common", "platform"}
BELOW_APP = {"common", "platform", "device", "device/usb", "device/ble", "device/http",
             "portal", "updater", "core"}
MAY_INCLUDE = {
    "common": set(),
    "platform": {"common"},
    "device": {"common"},
    "device/usb": CARRIER,
    "device/ble": CARRIER,
    "device/http": CARRIER,
    "portal": {"common"},
    "updater": {"common", "platform"},
    "core": {"common", "platform", "device", "portal"},
    "plugin": BELOW_APP,
    "sources": BELOW_APP | {"plugin", "ui/widgets"},
    "ui/widgets": {"common"},
    "ui/manager": {"common", "core", "device", "device/usb", "ui/widgets"},
    "ui/setup": BELOW_APP | {"plugin", "ui/widgets", "ui/manager"},
    "ui/account": BELOW_APP | {"plugin", "ui/widgets"},
    "ui/dock": BELOW_APP | {"plugin", "ui/widgets", "ui/setup", "ui/account"},
    "helper": {"common"},
    # Right below src/ lies the module, which wires everything.
    "": BELOW_APP | {"plugin", "sources", "ui/dock"},
}

KNOWS_OBS = {"", "plugin", "sources", "ui/dock"}
OBS_HEADER = re.compile(r"(libobs/)?(obs[\w-]*\.(h|hpp)|(util|graphics|media-io|callback)/[\w./-]+\.h)$")
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)


def path_of(file):
    """A file's path as an include would name it."""
    file = file.resolve()
    below = SOURCE.resolve()
    return file.relative_to(below if file.is_relative_to(below) else below.parent).as_posix()


def folder_of(path):
    """The longest entry of the table that holds this path, or None."""
    parts = pathlib.PurePosixPath(path).parent.parts
    if not parts:
        return ""
    for length in range(len(parts), 0, -1):
        if (name := "/".join(parts[:length])) in MAY_INCLUDE:
            return name
    return None


def included_folder(file, name):
    """The folder that an include names, or None for a header from outside the project."""
    if (file.parent / name).is_file():
        return folder_of(path_of(file.parent / name))
    # Also catches a header that the build generates.
    return folder_of(name) if "/" in name else None


def faults_in(file):
    path = path_of(file)
    own = folder_of(path)
    if own is None:
        return [f"{file}: its folder is missing in the table of {__file__}"]
    allowed = MAY_INCLUDE[own] | {own}
    faults = []
    for _, name in INCLUDE.findall(file.read_text(encoding="utf-8")):
        target = included_folder(file, name)
        if target is not None and target not in allowed:
            faults.append(f'{file}: "{own}" may not include "{name}"')
        elif target is None and OBS_HEADER.match(name) and own not in KNOWS_OBS:
            faults.append(f'{file}: "{own}" may not know OBS ("{name}")')
    return faults


def main():
    files = []
    for top in SOURCE, HELPER:
        found = sorted(file for file in top.rglob("*") if file.suffix in (".h", ".cpp"))
        if not found:
            return f"no sources were found in {top}/"
        files += found
    faults = [fault for file in files for fault in faults_in(file)]
    if faults:
        return "\n".join(faults)
    print(f"check: includes: {len(files)} files include what their folders may know")
    return None


if __name__ == "__main__":
    sys.exit(main())
