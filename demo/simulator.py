# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Starts the simulated venue and steers it, in a sandbox that trusts its authority alone."""

import json
import shutil
import subprocess
import sys
import urllib.request
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parent.parent
CERTIFICATES = Path("/etc/ssl/certs")
CONTROL = "http://127.0.0.1:8099"
ACCOUNT = "crew@venue.example:correct horse battery"
COOKIE = "demo-session-5f0c3a9e71d24b86"


class NotInSandbox(Exception):
    def __init__(self):
        super().__init__("Start this through make: it trusts a certificate authority of its own, "
                         "which is done only in the sandbox that make starts.")


def require_sandbox():
    mounts = [line.split() for line in Path("/proc/self/mounts").read_text().splitlines()]
    if not any(place == str(CERTIFICATES) and kind == "tmpfs" for _, place, kind, *_ in mounts):
        raise NotInSandbox


def trust(ca_file):
    """Makes an authority the only one that is trusted."""
    require_sandbox()
    for entry in CERTIFICATES.iterdir():
        entry.unlink()
    shutil.copy(ca_file, CERTIFICATES / "tallyforge-sim.pem")
    subprocess.run(["openssl", "rehash", str(CERTIFICATES)], check=True, capture_output=True)


class Simulator:
    """Use as a context. The options are those of sim's command line."""

    def __init__(self, folder, devices, *options):
        self.folder = Path(folder)
        self.cookie = COOKIE
        self._command = [sys.executable, str(REPOSITORY / "sim"), "--host", "127.0.0.1",
                         "--account", ACCOUNT, "--session-cookie", COOKIE, *options]
        for device in devices:
            self._command += ["--device", device]

    def __enter__(self):
        require_sandbox()   # before anything has been started
        self._start("trusted")
        return self

    def _start(self, authority):
        folder = self.folder / authority
        folder.mkdir(parents=True, exist_ok=True)
        with open(self.folder / "sim.log", "ab") as log:
            self._process = subprocess.Popen([*self._command, "--ca-dir", str(folder)], text=True,
                                             stdout=subprocess.PIPE, stderr=log)
        line = self._process.stdout.readline()
        if not line:
            raise RuntimeError("The simulator did not start: "
                               + (self.folder / "sim.log").read_text()[-500:])
        self.ready = json.loads(line)
        self.devices = {device["id"]: device for device in self.ready["devices"]}
        if authority == "trusted":
            trust(self.ready["ca"])

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait(timeout=10)
        self._process.stdout.close()

    def restart(self, trusted):
        """Starts over; when not trusted, with an authority of which nobody else knows."""
        self.__exit__()
        self._start("trusted" if trusted else "untrusted")

    def call(self, path, body=None):
        """A control request: with a body it is a POST."""
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(CONTROL + path, data)
        with urllib.request.urlopen(request, timeout=10) as answer:
            return json.load(answer)

    def state(self):
        return self.call("/state")

    def device(self, device_id):
        return self.state()["devices"][device_id]

    def secrets(self):
        """Every password, cookie and token that it has dealt out."""
        return self.call("/secrets")["secrets"]

    def set(self, device_id, fields=None, **others):
        return self.call("/set", {"device": device_id, "fields": fields or {}} | others)

    def step(self, count=1):
        """Plays on by that many plays of the game."""
        return self.call("/step", {"count": count})

    def fault(self, where, kind, **others):
        return self.call("/fault", {"where": where, "kind": kind} | others)

    def clear(self, where=None):
        return self.call("/clear", {"where": where} if where else {})

    def revoke_session(self):
        return self.call("/session", {"revoke": True})

    def env(self):
        """What a program needs in its environment to find the devices by Bluetooth."""
        if not self.ready["ble"]:
            return {}
        # Qt would ask the bus's owner, which is no bluetoothd, for its version; and it complains
        # where the kernel, as a container's, has no Bluetooth.
        return {"DBUS_SYSTEM_BUS_ADDRESS": self.ready["ble"]["bus"],
                "BLUETOOTH_FORCE_DBUS_LE_VERSION": "5.80",
                "QT_LOGGING_RULES": "qt.bluetooth.bluez.warning=false"}

    def admin(self, device_id, **wishes):
        """Changes what a device is or has, as /admin of the control requests tells."""
        return self.call("/admin", {"device": device_id} | wishes)

    @property
    def usb_port(self):
        """Where the first device or receiver on a cable is plugged in."""
        return self.ready["usb"][0]["path"]

    def admin_password(self, device_id):
        return self.call("/secrets")["devices"][device_id]["admin_password"]

    def polls(self, device_id):
        """How often the portal was asked for a device's state."""
        return self.state()["portal"]["by_path"].get(f"/devices/{device_id}/state", 0)

    def lan_entry(self, device_id, token=None):
        """What the plug-in's settings hold about a device on the local network."""
        device = self.devices[device_id]
        return {"host": device["host"], "token": token or device["token"],
                "name": device["nickname"]}
