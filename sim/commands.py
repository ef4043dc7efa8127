# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What an account does with its devices through the portal."""

NAMES = ("get_status", "ota_check", "reboot")


class Unreached(Exception):
    """The device did not answer the portal."""


class Commands:
    def __init__(self, devices, admins, status):
        self._devices = devices
        self._admins = admins      # device id -> Admin
        self._status = status      # gives the portal's word for a device
        self._queued = set()       # devices that restart as soon as they are back

    @property
    def queued(self):
        return sorted(self._queued)

    def run_queue(self):
        for device_id in self.queued:
            if self._reaches(self._devices[device_id]):
                self._queued.discard(device_id)
                self._admins[device_id].power.restart("software")

    def _reaches(self, device):
        admin = self._admins[device.id]
        return self._status(device) == "online" and admin.cloud_account and not admin.power.down

    def run(self, device, command):
        """The reply; raises Unreached."""
        if command == "reboot":
            queued = not self._reaches(device)
            self._queued.add(device.id)
            self.run_queue()
            return {"ok": True, "queued": queued, "data": {}}
        admin = self._reached(device)
        data = self._offer(admin) if command == "ota_check" else self._report(device, admin)
        return {"ok": True, "queued": False, "data": data}

    def configure(self, device, config):
        """Raises Unreached."""
        admin = self._reached(device)
        device.config = config
        admin.settings.choose(config)

    def _reached(self, device):
        if not self._reaches(device):
            raise Unreached
        return self._admins[device.id]

    @staticmethod
    def _offer(admin):
        told = admin.updating.check()
        return {"current": told["current_version"]} | {
            key: told[key] for key in ("update_available", "version", "error")}

    @staticmethod
    def _report(device, admin):
        return {"device_id": device.id, "fw_version": device.firmware, "sport": device.sport,
                "wifi_rssi": -52, "uptime_s": int(admin.power.uptime),
                "network": admin.wifi.status(), "inputs": [admin.settings.choice],
                **admin.settings.choice, **device.config}
