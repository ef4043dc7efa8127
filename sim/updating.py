# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's updates, as its administration offers them: of its firmware and its wireless chip."""

import upgrades
from download import Download
from signin import Refused

NO_WAY = "The device has no way to the internet."


def _told(error):
    return {} if error is None else {"error": error}


def _start(upgrade):
    if upgrade.running:
        raise Refused("update_running", "An update is running already.")
    if not upgrade.offered:
        raise Refused("no_update", "There is no update to install.")
    upgrade.start()
    return {"status": "ok"}


class Updating:
    def __init__(self, clock, wifi, power, version):
        self._clock = clock
        self._wifi = wifi
        self._power = power
        self.tunnels = []          # each gives a way for firmware through a host, or None
        self.firmware = upgrades.firmware(clock, version, self._restart, self._way)
        self.add_chip()

    def add_chip(self):
        self.chip = upgrades.chip(self._clock, self._restart)

    def _restart(self):
        self._power.restart("update", 0)

    def finish_restart(self):
        for upgrade in filter(None, (self.firmware, self.chip)):
            upgrade.finish_restart()

    def shown(self):
        return {name: upgrade.shown() for name, upgrade in
                (("firmware", self.firmware), ("chip", self.chip)) if upgrade}

    # Where firmware comes from

    @property
    def _tunnel(self):
        return next((tunnel for find in self.tunnels if (tunnel := find())), None)

    @property
    def _online(self):
        return bool(self._wifi.ip or self._tunnel)

    def _way(self, size):
        """A download through a host; None if the device has a network of its own."""
        return None if self._wifi.ip else Download(self._tunnel, size, self._clock.pace)

    # Its methods

    def check(self):
        firmware, online = self.firmware, self._online
        offered = firmware.offered if online else ""
        return {"current_version": firmware.version,
                "error": firmware.check_error if online else NO_WAY,
                "update_available": bool(offered) and offered != firmware.version,
                "version": offered or ""}

    def apply(self):
        if not self._online:
            raise Refused("no_connection", NO_WAY)
        return _start(self.firmware)

    def progress(self):
        state, moved, error = self.firmware.tell()
        return {"state": state, "total_bytes": self.firmware.known_size, "bytes_read": moved,
                **_told(error)}

    def _the_chip(self):
        if not self.chip:
            raise Refused("not_supported", "This device has no wireless chip of that kind.")
        return self.chip

    def chip_status(self):
        chip = self._the_chip()
        state, moved, error = chip.tell()
        return {"c6_running_version": chip.version, "state": state,
                "total_bytes": chip.known_size, "bytes_sent": moved, **_told(error)}

    def apply_chip(self):
        return _start(self._the_chip())
