# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's administration over Bluetooth: it plays a device of the double of BlueZ."""

import asyncio
import os
import socket
import tempfile

from ble_wire import Requests, WireError, packets
from net import log
from rpc import RpcServer

MTU = 247
SIZE = MTU - 3             # of a write and of a notification
LEAST = 20


class BleFace:
    """One connection at a time: a socket of packets to the double."""

    name = "ble"

    def __init__(self, venue, faults, admin, bluez, address):
        self._venue = venue
        self._admin = admin
        self._bluez = bluez
        self.address = address
        self.title = f"Tallyforge {admin.device_id}"
        self.rpc = RpcServer(venue, faults, admin, self.name, self._send)
        self.connects = self.writes = 0
        self.is_near = True
        self._listener = self._link = self._task = None
        self._folder = None
        self._replies = 0
        self._one_text = asyncio.Lock()
        admin.power.hooks.append(self._restart)

    def shown(self):
        return {"address": self.address, "near": self.is_near, "open": self._link is not None,
                "connects": self.connects, "writes": self.writes,
                "signed_in": self.rpc.session.signed_in, "logins": self.rpc.logins,
                "requests": self.rpc.requests}

    # Its presence

    def open(self):
        self._folder = tempfile.TemporaryDirectory(prefix="tallyforge-ble-")
        self._path = os.path.join(self._folder.name, "device")
        self._listen()
        self._bluez.add(self.address, self.title, self._path, MTU)

    def close(self):
        self._stop()
        if self._folder:
            self._folder.cleanup()

    def _listen(self):
        self._listener = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        self._listener.bind(self._path)
        self._listener.listen()
        self._listener.setblocking(False)
        self._task = asyncio.get_running_loop().create_task(self._accept(self._listener))

    def _stop(self):
        """It is gone: a connection ends, and there are no further ones."""
        if self._listener:
            self._task.cancel()
            self._listener.close()
            os.unlink(self._path)
            self._listener = None
        self.lose()

    def lose(self):
        """Ends the connection; a new one may follow."""
        if self._link:
            self._link.shutdown(socket.SHUT_RDWR)    # which the task that reads sees

    def set_near(self, is_near):
        self.is_near = is_near
        self._apply()

    def _restart(self, _):
        self._apply()

    def _apply(self):
        is_there = self.is_near and not self._admin.power.down
        if is_there and not self._listener:
            self._listen()
        elif not is_there:
            self._stop()
        self._bluez.show(self.address, is_there)

    # The connection

    async def _accept(self, listener):
        loop = asyncio.get_running_loop()
        while True:
            link, _ = await loop.sock_accept(listener)
            if self._link:
                link.close()
                continue
            self._link = link
            loop.create_task(self._serve(link))

    async def _serve(self, link):
        log(f"ble {self._admin.device.id}: a host is connected")
        self.connects += 1
        requests = Requests(SIZE)
        try:
            while data := await asyncio.get_running_loop().sock_recv(link, 4096):
                self._take(requests, data)
        except OSError:
            pass
        self._link = None
        self.rpc.reset()
        link.close()

    def _take(self, requests, data):
        self.writes += 1
        try:
            text = requests.feed(data)
        except WireError as error:
            self._venue.violation(f"ble {self._admin.device.id}: {error}")
            return
        if text is not None:
            self.rpc.take(text)

    async def _send(self, text, fault):
        """Long texts go with the long header and the short one by turns."""
        self._replies += 1
        kind, size, link = fault and fault.kind, SIZE, self._link
        if kind == "fragments":
            size = max(LEAST, min(SIZE, fault.bytes))
        elif kind == "gap":
            size = max(LEAST, min(SIZE, len(text) // 4))
        pieces = packets(text, size, self._replies % 255 + 1, self._replies % 2 == 0)
        if kind == "gap":
            del pieces[1:2]
        async with self._one_text:
            for piece in pieces:
                if link and link is self._link:
                    await asyncio.get_running_loop().sock_sendall(link, piece)
