# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Tasks that take a device a while: its network test, and updates of its two processors."""

STEP_SECONDS = 2           # of one check of the network test
CHECKS = ("local_network", "dns", "mqtt", "websocket_https", "firewall", "end_to_end")


class NetworkTest:
    """Started by the first question, told by the following ones until it is done."""

    def __init__(self, clock):
        self._clock = clock
        self._since = None
        self.failing = {}          # check -> why it fails
        self.hangs = False         # its last check never comes to an end

    def ask(self):
        now = self._clock.now()
        if self._since is None:
            self._since = now
        ready = min(int((now - self._since) / STEP_SECONDS), len(CHECKS) - self.hangs)
        checks = {name: {"ok": name not in self.failing, "detail": self.failing.get(name, "")}
                  for name in CHECKS[:ready]}
        if ready < len(CHECKS):
            return {"status": "running", "checks": checks}
        self._since = None
        return {"status": "done", "checks": checks, "overall": not self.failing}


class Upgrade:
    """One processor's update: stages over time, then a restart into the new version."""

    def __init__(self, clock, version, offered, size, stages, restart):
        self._clock = clock
        self._stages = stages      # of [name, seconds]; bytes move in the first one
        self._restart = restart
        self._since = None
        self._timer = None
        self._failed = ""
        self.version = version
        self.offered = offered
        self.size = size
        self.error = ""            # why it will fail half-way, if it will
        self.check_error = ""

    @property
    def running(self):
        return self._since is not None

    def start(self):
        self._since, self._failed = self._clock.now(), ""
        total = sum(seconds for _, seconds in self._stages)
        self._timer = self._clock.later(total, self._finish)

    def _finish(self):
        if self.error:
            self._since, self._failed = None, self.error
        else:
            self._restart(self)

    def finish_restart(self):
        """The device comes up: a finished update has taken effect, any other is forgotten."""
        if self.running and self.state()[0] == "rebooting":
            self.version = self.offered or self.version
        self.cancel()

    def cancel(self):
        self._since, self._failed = None, ""
        if self._timer:
            self._timer.cancel()

    def state(self):
        """The present stage's name, the bytes moved, and the error."""
        if self._failed:
            return "failed", self.size // 2, self._failed
        if self._since is None:
            return "idle", 0, ""
        elapsed = self._clock.now() - self._since
        if self.error and elapsed >= self._stages[0][1] / 2:
            return "failed", self.size // 2, self.error
        moved = min(self.size, int(self.size * elapsed / self._stages[0][1]))
        for name, seconds in self._stages:
            if elapsed < seconds:
                return name, moved, ""
            elapsed -= seconds
        return "rebooting", self.size, ""


def firmware(clock, version, restart):
    return Upgrade(clock, version, "2.5.0", 1_572_864,
                   [("downloading", 12), ("applying", 4), ("rebooting", 2)], restart)


def chip(clock, restart):
    return Upgrade(clock, "1.1.2", "1.2.0", 655_360,
                   [("transferring", 8), ("verifying", 2), ("rebooting", 2)], restart)
