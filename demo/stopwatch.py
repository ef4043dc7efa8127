# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long something took, apart from what other programs' work added to it."""

import os
import time
from pathlib import Path

PRESSURE = Path("/proc/pressure/cpu")   # not every Linux has it


def _waited():
    """Seconds since the computer's start in which a program may have waited for a processor. The
    system gives the average of all processors: all of it may have happened on the one in question."""
    try:
        first = PRESSURE.read_text().split("\n", 1)[0]   # some avg10=0.00 … total=MICROSECONDS
    except OSError:
        return 0
    return int(first.rpartition("=")[2]) / 1e6 * (os.cpu_count() or 1)


class Stopwatch:
    def __init__(self):
        self._begin, self._waited = time.monotonic(), _waited()

    def seconds(self):
        return time.monotonic() - self._begin

    def own_seconds(self):
        """For upper limits: without the time in which a program may have waited for a processor."""
        return max(0, self.seconds() - (_waited() - self._waited))
