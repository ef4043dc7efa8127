# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How fast an update of the largest size is downloaded, and what that costs OBS."""

import hashlib
import json
import os
import subprocess
import sys
import time

from fan_out import running
from figures import Heading, Row, median

SIZE, PORT, ROUNDS = 200 * 1024 * 1024, 8765, 5
CURL_TIMES, HELD_MILLISECONDS, MEGABYTES = 1.3, 8, 4
ADDRESS = f"http://127.0.0.1:{PORT}/"


def make_release(folder):
    """An update of random bytes, which nobody gets to unpack."""
    package = os.urandom(SIZE)
    (folder / "package").write_bytes(package)
    entry = {"url": ADDRESS + "package", "size": SIZE, "sha256": hashlib.sha256(package).hexdigest()}
    (folder / "latest.json").write_text(
        json.dumps({"version": "9.9.9", "packages": {"bench": entry}}))
    return entry["sha256"]


def ours(program, folder):
    folder.mkdir()
    return json.loads(subprocess.run([str(program), ADDRESS + "latest.json", str(folder)],
                                     check=True, timeout=120, stdout=subprocess.PIPE).stdout)


def by_curl(target, checksum):
    begin = time.monotonic()
    shown = subprocess.run(f"curl -s {ADDRESS}package | tee {target} | sha256sum", shell=True,
                           check=True, timeout=120, stdout=subprocess.PIPE, text=True).stdout
    if shown.split()[0] != checksum:
        raise RuntimeError("curl got something else")
    return time.monotonic() - begin


def measure(program, folder):
    release = folder / "release"
    release.mkdir()
    checksum = make_release(release)
    server = [sys.executable, "-m", "http.server", str(PORT), "--bind", "127.0.0.1",
              "--directory", str(release)]
    found, curl = [], []
    with running(server, PORT):
        for number in range(ROUNDS):
            found.append(ours(program, folder / f"download-{number}"))
            curl.append(by_curl(folder / f"curl-{number}", checksum))
    return rows(found, curl)


def rows(found, curl):
    seconds = [one["seconds"] for one in found]
    held = [max(one["held"]) for one in found]
    megabytes = [one["bytes"] / 1e6 for one in found]
    limit = CURL_TIMES * median(curl)
    return [
        Heading(f"Download of an update of 200 MiB: within {CURL_TIMES} times of curl"),
        Row("Received, summed up and written", "s", seconds, f"< {limit:.2f}",
            median(seconds) < limit),
        Row("    curl | tee FILE | sha256sum", "s", curl),
        Row("    event loop held at most", "ms", held, f"< {HELD_MILLISECONDS}",
            max(held) < HELD_MILLISECONDS),
        Row("    memory beyond the start", "MB", megabytes, f"< {MEGABYTES}",
            max(megabytes) < MEGABYTES),
    ]
