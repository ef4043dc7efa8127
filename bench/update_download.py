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


def by_curl(program, target, checksum):
    """What curl takes, and how long an event loop with nothing to do is held beside it."""
    with subprocess.Popen([str(program)], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as idle:
        seconds = time_curl(target, checksum)
        return {"seconds": seconds} | json.loads(idle.communicate(timeout=60)[0])


def time_curl(target, checksum):
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
            curl.append(by_curl(program, folder / f"curl-{number}", checksum))
    return rows(found, curl)


def rows(found, curl):
    def each(runs, kind):
        return [run[kind] for run in runs]
    seconds, by_curl_seconds = each(found, "seconds"), each(curl, "seconds")
    held, idle = sum(each(found, "waited"), []), sum(each(curl, "waited"), [])
    megabytes = [size / 1e6 for size in each(found, "bytes")]
    limit = CURL_TIMES * median(by_curl_seconds)
    return [
        Heading(f"Download of an update of 200 MiB: within {CURL_TIMES} times of curl"),
        Row("Received, summed up and written", "s", seconds, f"< {limit:.2f}",
            median(seconds) < limit),
        Row("    curl | tee FILE | sha256sum", "s", by_curl_seconds),
        Row("    event loop held", "ms", held, f"< {HELD_MILLISECONDS}",
            max(held) < HELD_MILLISECONDS),
        Row("    an idle one while curl downloads: what the machine does", "ms", idle),
        Row("    memory beyond the start", "MB", megabytes, f"< {MEGABYTES}",
            max(megabytes) < MEGABYTES),
    ]
