# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long something took, apart from what other programs' work added to it."""

import time
from pathlib import Path

PRESSURE = Path("/proc/pressure/cpu")   # not every Linux has it


def _waited():
    """Seconds since the computer's start in which a program that could have run had no processor."""
    try:
        first = PRESSURE.read_text().split("\n", 1)[0]   # some avg10=0.00 … total=MICROSECONDS
    except OSError:
        return 0
    return int(first.rpartition("=")[2]) / 1e6


class Stopwatch:
    def __init__(self):
        self._begin, self._waited = time.monotonic(), _waited()

    def seconds(self):
        return time.monotonic() - self._begin

    def own_seconds(self):
        """For upper limits: without the time in which any program waited for a processor."""
        return self.seconds() - (_waited() - self._waited)
