# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's restarts."""

GOODBYE_SECONDS = 0.5      # between the answer to "reboot" and the restart
RESTART_SECONDS = 4


class Power:
    def __init__(self, clock, come_up):
        self._clock = clock
        self._come_up = come_up    # called before the hooks, with the reason
        self._planned = False
        self._booted = clock.now()
        self.reason = "power_on"   # of the last restart
        self.down = False
        self.restarts = 0
        self.hooks = []            # called with True as it goes down, False as it comes up

    @property
    def uptime(self):
        return self._clock.now() - self._booted

    def restart(self, reason, after=GOODBYE_SECONDS):
        if not self._planned:
            self._planned, self.reason = True, reason
            self._clock.later(after, self._go_down)

    def _go_down(self):
        self.down = True
        for hook in self.hooks:
            hook(True)
        self._clock.later(RESTART_SECONDS, self._start)

    def _start(self):
        self.restarts += 1
        self._booted = self._clock.now()
        self._come_up()
        self._planned = self.down = False
        for hook in self.hooks:
            hook(False)
