# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Runs clang-tidy and clazy over what the dev preset compiles, as far as the time allows.

A file not begun when CHECK_TIDY_SECONDS (240) are over is left out, so changed files (CHECK_CHANGED,
one a line) come first. A file that passed is not looked at again before it, a header of the project
that it includes or the configuration changes.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

PROJECT = pathlib.Path.cwd()
BUILD = PROJECT / "build/dev"
PASSED = PROJECT / "build/tidy"
COMMANDS = PROJECT / "build/tidy-commands"
# A host that is used directly may lack it; the cached root has it.
HAS_CLAZY = shutil.which("clazy-standalone") is not None
CLAZY_CHECKS = "level0,level1"
HEADERS = f"^{re.escape(str(PROJECT))}/(src|helper|tests|bench)/"


def compiled_sources():
    """The project's own sources in the compile database, of which it leaves a copy for the tools.

    The copy knows no precompiled header, so a file that lacks an include of its own is found.
    """
    entries = json.loads((BUILD / "compile_commands.json").read_text())
    for entry in entries:
        entry["command"] = re.sub(r" -Winvalid-pch| -include \S+/cmake_pch\.hxx", "", entry["command"])
    COMMANDS.mkdir(exist_ok=True)
    (COMMANDS / "compile_commands.json").write_text(json.dumps(entries))
    files = {pathlib.Path(entry["directory"], entry["file"]).resolve() for entry in entries}
    return sorted(file for file in files
                  if file.is_relative_to(PROJECT) and not file.is_relative_to(PROJECT / "build"))


def headers_by_source():
    """The project's headers that each source includes, from what Ninja recorded."""
    listed = subprocess.run(["ninja", "-C", str(BUILD), "-t", "deps"],
                            check=True, capture_output=True, text=True).stdout
    found = {}
    for block in listed.split("\n\n"):
        paths = [(BUILD / line.strip()).resolve() for line in block.splitlines()[1:]]
        own = [path for path in paths if path.is_relative_to(PROJECT)
               and not path.is_relative_to(PROJECT / "build") and path.is_file()]
        if own:
            found.setdefault(own[0], set()).update(own[1:])
    return found


def fingerprint(source, headers):
    seen = hashlib.sha256(os.environ.get("TALLYFORGE_ROOT", "").encode() + CLAZY_CHECKS.encode())
    configurations = [folder / ".clang-tidy" for folder in source.parents
                      if folder.is_relative_to(PROJECT) and (folder / ".clang-tidy").is_file()]
    for path in [*configurations, source, *sorted(headers)]:
        seen.update(str(path).encode() + b"\0" + path.read_bytes())
    return seen.hexdigest()


def findings(source):
    """The two tools' findings in a source, "" for none."""
    tidy = subprocess.run(
        ["clang-tidy", "-p", COMMANDS, "--quiet", "--extra-arg=-Wno-unknown-warning-option", source],
        capture_output=True, text=True, check=False)
    if tidy.returncode:
        return tidy.stdout + tidy.stderr
    if not HAS_CLAZY:
        return ""
    clazy = subprocess.run(
        ["clazy-standalone", "-p", COMMANDS, f"--checks={CLAZY_CHECKS}", f"--header-filter={HEADERS}",
         "--extra-arg=-Wno-unknown-warning-option", source],
        capture_output=True, text=True, check=False)
    return clazy.stderr if clazy.returncode or "[-Wclazy" in clazy.stderr else ""


def show(found, shown):
    """Prints findings, those in headers only once."""
    for finding in re.split(r"^(?=/\S+:\d+:\d+: (?:warning|error):)", found, flags=re.MULTILINE):
        finding = re.sub(r"^\d+ warnings? generated\.\n", "", finding, flags=re.MULTILINE).rstrip()
        if finding and finding not in shown:
            shown.add(finding)
            print(finding.replace(f"{PROJECT}/", ""), flush=True)


def run(queue, deadline, prints):
    """Works through the queue; returns the number of files done and of those with findings."""
    done = bad = 0
    shown = set()

    def one(source):
        return findings(source) if time.monotonic() < deadline else None

    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        for source, found in zip(queue, pool.map(one, queue)):
            if found is None:
                continue
            done += 1
            if found:
                bad += 1
                show(found, shown)
            else:
                (PASSED / prints[source]).touch()
    return done, bad


def main():
    sources = compiled_sources()
    if not sources:
        return "the compile database holds none of the project's sources"
    PASSED.mkdir(parents=True, exist_ok=True)
    headers = headers_by_source()
    prints = {source: fingerprint(source, headers.get(source, ())) for source in sources}
    for old in PASSED.iterdir():
        if old.name not in prints.values():
            old.unlink()

    names = os.environ.get("CHECK_CHANGED", "").splitlines()
    touched = {(PROJECT / name).resolve() for name in names}
    changed = {source for source in sources if touched & {source, *headers.get(source, ())}}
    queue = [source for source in sources if not (PASSED / prints[source]).exists()]
    queue.sort(key=lambda source: source not in changed)
    deadline = time.monotonic() + int(os.environ.get("CHECK_TIDY_SECONDS", "240"))
    done, bad = run(queue, deadline, prints)
    known = len(sources) - len(queue)
    if not done and not known:
        return "CHECK_TIDY_SECONDS left no time to look at a single file"
    tools = "clang-tidy and clazy" if HAS_CLAZY else "clang-tidy (there is no clazy here)"
    print(f"check: {tools}: {done} of {len(sources)} files looked at now, {known} known to be fine, "
          f"{len(queue) - done} left for lack of time, {bad} with findings")
    return 1 if bad else None


if __name__ == "__main__":
    sys.exit(main())
