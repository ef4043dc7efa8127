# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How fast the plug-in downloads an update of itself, beside curl, and what that costs OBS."""

import json
import os
import shutil
import subprocess
import sys
import threading
import time
from contextlib import contextmanager
from functools import partial
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "packaging"))
import package  # noqa: E402: it has to be found first

from figures import Heading, Row, median

MEGABYTES, ROUNDS = 199, 9      # with what a zip adds, about as large as a package may be
CURL_TIMES, HELD_MILLISECONDS, MEMORY_KILOBYTES = 1.3, 8, 4096
CURL = 'set -e; curl -sSf "$0" | tee "$1" | sha256sum'


class Files(SimpleHTTPRequestHandler):
    def copyfile(self, source, _):
        self.connection.sendfile(source)    # as fast as the system can: it is not what is measured

    def log_message(self, *_):
        pass


@contextmanager
def serving(folder):
    with ThreadingHTTPServer(("127.0.0.1", 0), partial(Files, directory=folder)) as server:
        threading.Thread(target=server.serve_forever, daemon=True).start()
        try:
            yield f"http://127.0.0.1:{server.server_port}/"
        finally:
            server.shutdown()


def offer(build, folder, url):
    """Leaves a package of the largest size and its manifest in the folder."""
    plugin = folder / "tallyforge-obs"
    facts = package.facts_of(build / "packaging/tallyforge-release-facts")
    (plugin / facts["binary"]).parent.mkdir(parents=True)
    (plugin / facts["binary"]).write_bytes(os.urandom(MEGABYTES << 20))
    made = package.make(plugin, facts | {"version": "9.0.0", "manifest_url": url + "latest.json"}, folder,
                        "## 9.0.0\n\n- Larger.\n")
    shutil.rmtree(plugin)
    return made


def ours(program, url, folder):
    folder.mkdir()
    done = subprocess.run([str(program), url + "latest.json", str(folder)], check=True, timeout=120,
                          stdout=subprocess.PIPE)
    shutil.rmtree(folder)
    return json.loads(done.stdout)


def curl(url, made, folder):
    folder.mkdir()
    begin = time.monotonic()
    done = subprocess.run(["sh", "-c", CURL, url + made.name, str(folder / made.name)], check=True,
                          stdout=subprocess.PIPE, timeout=120)
    seconds = time.monotonic() - begin
    told = json.loads((made.parent / "latest.json").read_text())
    assert done.stdout.decode().split()[0] in json.dumps(told), "curl got another file"
    shutil.rmtree(folder)
    return seconds


def measure(build, folder):
    files = folder / "updates"
    files.mkdir()
    with serving(files) as url:
        made = offer(build, files, url)
        results, curls = [], []
        for number in range(ROUNDS):
            curls.append(curl(url, made, folder / f"curl-{number}"))
            results.append(ours(build / "bench/bench-update", url, folder / f"update-{number}"))
    shutil.rmtree(files)
    seconds, held, kilobytes = ([result[key] for result in results]
                                for key in ("seconds", "held", "kilobytes"))
    limit = CURL_TIMES * median(curls)
    return [
        Heading(f"An update of {MEGABYTES} MiB from loopback"),
        Row("downloaded, hashed and written by the plug-in", "s", seconds, f"< {limit:.2f}",
            median(seconds) < limit),
        Row("    by curl, tee and sha256sum", "s", curls),
        Row("event loop held, up to the end of the installation", "ms", held,
            f"< {HELD_MILLISECONDS}", max(held) < HELD_MILLISECONDS),
        Row("memory on top", "kB", kilobytes, f"< {MEMORY_KILOBYTES}",
            max(kilobytes) < MEMORY_KILOBYTES),
    ]
