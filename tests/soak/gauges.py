# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What a running OBS holds, over time: memory, open files and threads."""

import statistics
import time
from dataclasses import dataclass
from pathlib import Path

WARM_UP = 0.25            # of the run: fonts, caches and the allocator's arenas fill up
SLOPE_SECONDS = 1500      # a slope over less says more about the allocator's steps than about leaks
MEGABYTES_AN_HOUR = 1
STEP_MEGABYTES = 6        # what a short run may grow by
MORE_HANDLES = 2          # files or threads: some of them come and go


@dataclass(frozen=True)
class Reading:
    seconds: float
    megabytes: float
    files: int
    threads: int


def slope_an_hour(readings):
    seconds = [reading.seconds for reading in readings]
    return statistics.linear_regression(seconds, [reading.megabytes for reading in readings]).slope * 3600


class Gauges:
    """Read it when OBS is in the same state each time, or the figures mean nothing."""

    def __init__(self, obs):
        self._obs = obs
        self._begin = time.monotonic()
        self._readings = []

    def read(self):
        process = Path(f"/proc/{self._obs.process.pid}")
        self._readings.append(Reading(time.monotonic() - self._begin,
                                      self._obs.resident_kilobytes() / 1024,
                                      len(list((process / "fd").iterdir())),
                                      len(list((process / "task").iterdir()))))

    def judge(self):
        """The figures in a sentence, and what is wrong with them."""
        warm = [reading for reading in self._readings
                if reading.seconds > WARM_UP * self._readings[-1].seconds]
        if len(warm) < 4:
            return f"Only {len(warm)} readings: the run is too short to judge what it holds.", []
        half = len(warm) // 2
        first, second = warm[:half], warm[-half:]

        def medians(name):
            return [statistics.median(getattr(reading, name) for reading in part)
                    for part in (first, second)]
        before, after = medians("megabytes")
        lasted = warm[-1].seconds - warm[0].seconds
        slope = slope_an_hour(warm)
        told = (f"Over {lasted / 60:.1f} min after the warm-up: memory {before:.1f} to {after:.1f} MB, "
                f"{slope:+.2f} MB an hour; ")
        told += "; ".join("{} {:.0f} to {:.0f}".format(name, *medians(name)) for name in ("files", "threads"))
        faults = [f"more {name}: {medians(name)}" for name in ("files", "threads")
                  if medians(name)[1] > medians(name)[0] + MORE_HANDLES]
        is_long = lasted >= SLOPE_SECONDS
        if slope > MEGABYTES_AN_HOUR if is_long else after - before > STEP_MEGABYTES:
            faults.append(f"memory grows by {slope:.2f} MB an hour, {after - before:.1f} MB so far")
        return told, faults
