#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Makes a release of a built plug-in: the zip that its updater unpacks, and the update manifest."""

import argparse
import datetime
import hashlib
import json
import re
import stat
import subprocess
import sys
import zipfile
from pathlib import Path

SCHEMA = 1
MANIFEST = "latest.json"
OLDEST_DATE = (1980, 1, 1, 0, 0, 0)   # the first that a zip can hold: the same files, the same zip
RESERVED = (".old", ".part")   # the updater's own names while it replaces files
HEADING = re.compile(r"## (?P<version>\S+)(?:, (?P<date>\d{4}-\d\d-\d\d))?\s*")


class PackageError(Exception):
    """What keeps the release from being made, told in a sentence."""


def facts_of(program):
    done = subprocess.run([program], check=True, capture_output=True, text=True)
    return json.loads(done.stdout)


def _entries(folder):
    """The folder and all below it, by name; modes come down to whether it is a program, so that
    they don't depend on who builds."""
    for path in [folder, *sorted(folder.rglob("*"))]:
        kind = path.lstat().st_mode
        if not (stat.S_ISDIR(kind) or stat.S_ISREG(kind)):
            raise PackageError(f"{path} is neither a file nor a folder: the updater would refuse it.")
        if path.suffix in RESERVED:
            raise PackageError(f"{path} has a name that the updater needs for itself.")
        runs = stat.S_ISDIR(kind) or kind & stat.S_IXUSR
        yield path, stat.S_IFMT(kind) | (0o755 if runs else 0o644)


def write_zip(folder, target):
    """Packs a folder as the zip's one top-level entry."""
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as package:
        for path, mode in _entries(folder):
            name = path.relative_to(folder.parent).as_posix() + ("/" if path.is_dir() else "")
            entry = zipfile.ZipInfo(name, OLDEST_DATE)
            entry.create_system = 3   # Unix, whose modes these are
            entry.external_attr = mode << 16
            entry.compress_type = zipfile.ZIP_STORED if path.is_dir() else zipfile.ZIP_DEFLATED
            package.writestr(entry, b"" if path.is_dir() else path.read_bytes())


def changes_of(text, version):
    """The date of a version and its notes, from the list of changes."""
    date, notes, ours = None, [], False
    for line in text.splitlines():
        heading = HEADING.fullmatch(line)
        if heading:
            ours = heading["version"] == version
            date = heading["date"] if ours else date
        elif ours and line.startswith("- "):
            notes.append(line[2:].strip())
    return date or datetime.datetime.now(datetime.UTC).date().isoformat(), notes


def _manifest(facts, changes, package, merged):
    released, notes = changes_of(changes, facts["version"])
    if not notes:
        print(f"package: the list of changes says nothing of {facts['version']}.", file=sys.stderr)
    packages = {}
    if merged:
        if merged.get("version") != facts["version"]:
            raise PackageError("The manifest to be merged is that of another version.")
        packages = merged["packages"]
    data = package.read_bytes()
    packages[facts["platform_key"]] = {
        "url": facts["manifest_url"].rpartition("/")[0] + "/" + package.name,
        "sha256": hashlib.sha256(data).hexdigest(), "size": len(data)}
    return {"schema": SCHEMA, "version": facts["version"], "released": released,
            "min_obs": facts["min_obs"], "notes": notes, "packages": dict(sorted(packages.items()))}


def make(plugin, facts, out, changes="", merged=None):
    """Writes the package and the manifest into a folder, and returns the package's path."""
    if not (plugin / facts["binary"]).is_file():
        raise PackageError(f"{plugin} holds no {facts['binary']}: the updater would refuse it.")
    out.mkdir(parents=True, exist_ok=True)
    package = out / f"tallyforge-obs-{facts['version']}-{facts['platform_key']}.zip"
    write_zip(plugin, package)
    entries = list(_entries(plugin))
    sizes = {"max_package_bytes": package.stat().st_size, "max_entries": len(entries),
             "max_bytes": sum(path.stat().st_size for path, _ in entries if path.is_file())}
    for limit, size in sizes.items():
        if size > facts[limit]:
            raise PackageError(f"The updater would refuse the package: {limit} is {facts[limit]}, "
                               f"not {size}.")
    manifest = _manifest(facts, changes, package, merged)
    (out / MANIFEST).write_text(json.dumps(manifest, indent=2) + "\n")
    return package


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--plugin", type=Path, required=True, help="folder of the installed plug-in")
    parser.add_argument("--facts", type=Path, required=True, help="tallyforge-release-facts of its build")
    parser.add_argument("--out", type=Path, required=True)
    parser.add_argument("--changes", type=Path, required=True, help="the list of changes")
    parser.add_argument("--merge", type=Path, help="a manifest of the same version with other packages")
    options = parser.parse_args()
    try:
        merged = json.loads(options.merge.read_text()) if options.merge else None
        package = make(options.plugin, facts_of(options.facts), options.out,
                       options.changes.read_text(), merged)
    except (PackageError, OSError, ValueError) as error:
        sys.exit(f"package: {error}")
    print(f"{package}\n{options.out / MANIFEST}")


if __name__ == "__main__":
    main()
