# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A little cloud on loopback, at the far end of the tunnels of a device on USB."""

import asyncio
import re

from flow import Flow, noise
from net import Listener, reset, streams

MODES = {"pipe": "echo", "echo": "echo", "sink": "sink", "source": "source", "ota": "download"}
PIECE = 16384
KEPT = 50
REQUEST = re.compile(rb"GET (\d{1,8})\n")


def image_request(count):
    """What a device asks the update server for."""
    return b"GET %d\n" % count


def image(count):
    """The firmware image of that many bytes, in pieces."""
    return noise(count, count, PIECE)


class Connection:
    def __init__(self, writer):
        self.writer = writer
        self.open = True
        self.sent = Flow()
        self.received = Flow()

    def shown(self):
        return {"open": self.open, "sent": self.sent.shown(), "received": self.received.shown()}


class Target:
    """One port: "echo" sends back what comes, "sink" swallows it, "source" sends by itself,
    "download" sends the firmware image that it is asked for."""

    def __init__(self, mode):
        self.mode = mode
        self.source_bytes = 65536
        self.connections = []
        self.listener = Listener("127.0.0.1", 0, self._serve)
        self._tasks = set()

    @property
    def port(self):
        return self.listener.port

    async def _serve(self, sock):
        reader, writer, lost = await streams(sock)
        connection = Connection(writer)
        self.connections = [*self.connections, connection][-KEPT:]
        try:
            if self.mode == "source":
                await self._send(connection, self.source_bytes, 1)
                writer.close()
                await lost.wait()
            elif self.mode == "download":
                await self._serve_image(reader, connection)
                await lost.wait()
            while data := await reader.read(PIECE):
                connection.received.add(data)
                if self.mode == "echo":
                    await self._write(connection, data)
        finally:
            connection.open = False
            writer.transport.abort()

    async def _serve_image(self, reader, connection):
        try:
            line = await reader.readline()
        except ValueError:
            line = b""    # it has no end
        connection.received.add(line)
        asked = REQUEST.fullmatch(line)
        for data in image(int(asked[1])) if asked else ():
            await self._write(connection, data)
        connection.writer.close()

    @staticmethod
    async def _write(connection, data):
        connection.sent.add(data)
        connection.writer.write(data)
        await connection.writer.drain()

    async def _send(self, connection, count, seed):
        for data in noise(count, seed, PIECE):
            await self._write(connection, data)

    def newest(self):
        return next((c for c in reversed(self.connections) if c.open), None)

    def send(self, count, seed):
        """Sends random bytes on the newest connection; false if there is none."""
        connection = self.newest()
        if connection:
            task = asyncio.get_running_loop().create_task(self._guarded(connection, count, seed))
            self._tasks.add(task)
            task.add_done_callback(self._tasks.discard)
        return connection is not None

    async def _guarded(self, connection, count, seed):
        try:
            await self._send(connection, count, seed)
        except OSError:
            pass   # the peer has gone meanwhile

    def end_all(self, with_reset):
        for connection in self.connections:
            if connection.open and with_reset:
                reset(connection.writer)
            elif connection.open:
                connection.writer.close()


class Cloud:
    def __init__(self):
        self.targets = {name: Target(mode) for name, mode in MODES.items()}

    def tunnel(self):
        """The object that tells a host where the cloud is, and the streams' destinations."""
        return {"host": "127.0.0.1", "port": self.targets["pipe"].port,
                "streams": {name: {"host": "127.0.0.1", "port": target.port}
                            for name, target in self.targets.items() if name != "pipe"}}

    def shown(self):
        return {name: {"port": target.port, "mode": target.mode,
                       "listening": target.listener.listening,
                       "connections": [c.shown() for c in target.connections]}
                for name, target in self.targets.items()}
