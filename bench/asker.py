# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A process that holds a session with a device, and says how long the answers take."""

import json
import os
import subprocess
from pathlib import Path


class Asker:
    """The process bench-device. Use as a context."""

    def __init__(self, program):
        self._program = str(program)

    def __enter__(self):
        self._process = subprocess.Popen([self._program], text=True, bufsize=1,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        return self

    def __exit__(self, *_):
        self._process.stdin.close()
        self._process.wait(timeout=20)
        self._process.stdout.close()

    def _order(self, line):
        self._process.stdin.write(line + "\n")

    def open(self, link):
        """A session, or what it's to be compared with."""
        self._order(link)
        for line in self._process.stdout:
            message = json.loads(line)
            if message["state"] in ("Ready", "Error", "NeedsPassword"):
                break
        if message["state"] != "Ready":
            raise RuntimeError(f"No session: {message}")

    def _series(self, order, *names):
        """Milliseconds that each answer took."""
        self._order(order)
        answer = json.loads(self._process.stdout.readline())
        if min(min(answer[name]) for name in names) < 0:
            raise RuntimeError(f"{order} failed.")
        return [[value / 1e6 for value in answer[name]] for name in names]

    def ask(self, method, count):
        return self._series(f"ask {method} {count}", "took")[0]

    def compare(self, count, least_bytes=0, pause=0):
        """Those of "getState" in the session, and those of the bare carrier."""
        return self._series(f"compare {count} {least_bytes} {pause}", "took", "bare")

    def cpu_seconds(self):
        fields = Path(f"/proc/{self._process.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")
