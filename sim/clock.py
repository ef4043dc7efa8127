# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The devices' own time, which may pass faster than the computer's."""

import asyncio
import time


class Clock:
    """Counts a device's seconds, `pace` of them in each real one."""

    def __init__(self, pace=1.0):
        self.pace = pace
        self._base = 0.0
        self._since = time.monotonic()

    def now(self):
        return self._base + (time.monotonic() - self._since) * self.pace

    def set_pace(self, pace):
        """Waits that have begun keep their length; times computed from now() follow."""
        self._base, self._since = self.now(), time.monotonic()
        self.pace = pace

    async def sleep(self, seconds):
        await asyncio.sleep(seconds / self.pace)

    def later(self, seconds, action):
        return asyncio.get_running_loop().call_later(seconds / self.pace, action)
