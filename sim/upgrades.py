# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Tasks that take a device a while: its network test, and updates of its two processors."""

from power import GOODBYE_SECONDS

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

    def __init__(self, clock, version, offered, size, stages, restart, source=None):
        self._clock = clock
        self._moving = stages[0][0]    # the stage in which the image moves
        self._restart = restart
        self._source = source          # says where the image comes from; without it, from inside
        self._index = None             # of the present stage, or their number once all are over
        self._since = 0.0
        self._timer = self._download = self._failed = None
        self._told = self._due = False
        self.stages = stages           # of [name, seconds]
        self.version = version
        self.offered = offered
        self.size = size
        self.total = True              # whether it tells the size beforehand
        self.error = ""                # why it will fail, if it will; None: it does not tell why
        self.fails_in = ""             # half-way in this stage; without one, as the image moves
        self.waits = False             # no stage ends before it was told
        self.check_error = ""

    @property
    def running(self):
        return self._index is not None

    @property
    def known_size(self):
        return self.size if self.total else 0

    def start(self):
        self.cancel()
        self._download = self._source and self._source(self.size)
        self._enter(0)

    # From stage to stage

    def _enter(self, index):
        self._index, self._since = index, self._clock.now()
        self._told = self._due = False
        if index == len(self.stages):
            self._restart()
        elif self._name == self._moving and self._download:
            self._download.start(self._image_moves)
        else:
            half = 0.5 if self._fails_here else 1
            self._timer = self._clock.later(self.stages[index][1] * half, self._end_stage)

    @property
    def _name(self):
        return self.stages[min(self._index, len(self.stages) - 1)][0]

    @property
    def _fails_here(self):
        return self.error != "" and self._name == (self.fails_in or self._moving)

    def _image_moves(self):
        download = self._download
        if download.error:
            self._fail(download.error)
        elif download.done or (self._fails_here and download.moved >= self.size // 2):
            download.cancel()
            self._end_stage()

    def _end_stage(self):
        if self.waits and not self._told:
            self._due = True
        elif self._fails_here:
            self._fail(self.error)
        else:
            self._enter(self._index + 1)

    def _fail(self, why):
        moved = self._moved()
        self.cancel()
        self._failed = moved, why

    def finish_restart(self):
        """The device comes up: a finished update has taken effect, any other is forgotten."""
        if self.running and self._index >= len(self.stages) - 1:
            self.version = self.offered or self.version
        self.cancel()

    def cancel(self):
        if self._timer:
            self._timer.cancel()
        if self._download:
            self._download.cancel()
        self._index = self._timer = self._download = self._failed = None

    # What it tells

    def _moved(self):
        before = [name for name, _ in self.stages[:self._index]]
        if self._moving in before:
            return self.size
        if self._name != self._moving:
            return 0
        if self._download:
            return self._download.moved
        seconds = self.stages[self._index][1]
        gone = (self._clock.now() - self._since) / seconds if seconds else 1
        return int(self.size * min(gone, 0.5 if self._fails_here else 1))

    def state(self):
        """The present stage's name, the bytes moved, and the error: None if it is not told."""
        if self._failed:
            return "failed", *self._failed
        return ("idle", 0, "") if not self.running else (self._name, self._moved(), "")

    def shown(self):
        state, moved, _ = self.state()
        return {"version": self.version, "state": state, "bytes": moved,
                "tunnelled": self._download is not None}

    def tell(self):
        """The same, for the answer to a question of the host."""
        told = self.state()
        self._told = True
        if self._due:
            self._due = False
            self._timer = self._clock.later(GOODBYE_SECONDS, self._end_stage)
        return told


def firmware(clock, version, restart, source):
    return Upgrade(clock, version, "2.5.0", 1_572_864,
                   [("downloading", 12), ("applying", 4), ("rebooting", 2)], restart, source)


def chip(clock, restart):
    return Upgrade(clock, "1.1.2", "1.2.0", 655_360,
                   [("transferring", 8), ("verifying", 2), ("rebooting", 2)], restart)
