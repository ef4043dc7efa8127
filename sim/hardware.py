# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The devices as things: each one's administration, and the ports at which they are plugged."""

import asyncio

from admin import Admin
from ble import BleFace
from bluez import Bluez
from clock import Clock
from cloud import Cloud
from net import ListenError
from radio import Receiver
from usb import UsbFace


class Hardware:
    def __init__(self, venue, faults, pace, fingerprint, usb, receivers, ble):
        """`usb` and `receivers` are paths of ports by device id, `ble` Bluetooth addresses."""
        self.clock = Clock(pace)
        self.cloud = Cloud() if usb or receivers else None
        self.admins = {device.id: Admin(venue, device, self.clock, fingerprint,
                                        device.id in usb or device.id in receivers)
                       for device in venue.devices.values()}
        self.faces = {}   # (device id, "usb" or "receiver") -> UsbFace
        for device_id, path in usb.items():
            self._add(venue, faults, device_id, path, None)
        for device_id, path in receivers.items():
            self._add(venue, faults, device_id, path,
                      Receiver(venue.secret, self.admins[device_id]))
        self.bluez = Bluez() if ble else None
        self.radios = {name: BleFace(venue, faults, self.admins[name], self.bluez, address)
                       for name, address in ble.items()}   # by device id
        self._tasks = []

    def _add(self, venue, faults, device_id, path, receiver):
        face = UsbFace(venue, faults, self.admins[device_id], path, self.cloud, receiver)
        self.faces[device_id, face.name] = face

    def publish(self, device):
        moments = [face.publish() for (device_id, _), face in self.faces.items()
                   if device_id == device.id]
        return next((moment for moment in moments if moment), None)

    def apply_faults(self):
        for face in self.faces.values():
            face.apply_faults()

    def open(self):
        loop = asyncio.get_running_loop()
        for target in self.cloud.targets.values() if self.cloud else ():
            target.listener.open()
        if self.bluez:
            self.bluez.open()
        try:
            for face in self.faces.values():
                face.open()
        except ListenError:
            for face in self.faces.values():
                face.close()   # leaves no path behind
            if self.bluez:
                self.bluez.close()
            raise
        for radio in self.radios.values():
            radio.open()
        for face in self.faces.values():
            self._tasks += [loop.create_task(face.repeat()),
                            loop.create_task(face.tunnel.trickle())]

    async def close(self):
        for task in self._tasks:
            task.cancel()
        for face in self.faces.values():
            face.close()
        for radio in self.radios.values():
            radio.close()
        if self.bluez:
            self.bluez.close()
        for target in self.cloud.targets.values() if self.cloud else ():
            await target.listener.close()

    def ready(self):
        """For the line that tells that all is ready."""
        return [{"path": face.port.path, "device": device_id, "kind": face.kind}
                for (device_id, _), face in self.faces.items()]

    def ble_ready(self):
        """The same for Bluetooth, None if no device is to be found by it."""
        return self.bluez and {"bus": self.bluez.address, "devices": [
            {"address": radio.address, "device": device_id, "name": radio.title}
            for device_id, radio in self.radios.items()]}
