# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Listening sockets that can be shut and opened again, and streams over them."""

import asyncio
import ipaddress
import socket
import struct
import sys
import time

LINE_LIMIT = 1 << 16
HANDSHAKE_SECONDS = 10
CLOSING_SECONDS = 0.4   # for orderly goodbyes when the program ends


class ListenError(Exception):
    """A port that cannot be had, told in a sentence for the user."""


def log(text):
    """A line for the crew. Never hand a secret to it."""
    print(time.strftime("%H:%M:%S"), text, file=sys.stderr, flush=True)


def quoted_host(host):
    return f"[{host}]" if ":" in host else host


def is_loopback(host):
    try:
        return host == "localhost" or ipaddress.ip_address(host).is_loopback
    except ValueError:
        return False


def _bind(host, port):
    try:
        family, _, _, _, address = socket.getaddrinfo(
            host, port, type=socket.SOCK_STREAM, flags=socket.AI_PASSIVE)[0]
        sock = socket.socket(family, socket.SOCK_STREAM)
    except OSError as error:
        raise ListenError(f"The address {host} is not usable here: {error.strerror}.") from error
    try:
        sock.setblocking(False)
        sock.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        sock.bind(address)
    except OSError as error:
        sock.close()
        hint = (" Ports below 1024 belong to the administrator on many systems: choose another "
                "one, or run this as root.") if isinstance(error, PermissionError) else ""
        raise ListenError(f"Could not listen on {host} port {port}: {error.strerror}.{hint}") \
            from error
    return sock


class Listener:
    """One listening port. While it is shut, connections are refused, yet the port stays ours:
    its socket is bound but doesn't listen, so that no other program can take it meanwhile."""

    def __init__(self, host, port, serve):
        self.host = host
        self._serve = serve
        self._tasks = set()
        self._listening = False
        self._sock = _bind(host, port)
        self.port = self._sock.getsockname()[1]

    @property
    def listening(self):
        return self._listening

    def open(self):
        if self._listening:
            return
        try:
            self._sock.listen(128)
        except OSError as error:
            raise ListenError(f"Could not listen on {self.host} port {self.port}: "
                              f"{error.strerror}.") from error
        asyncio.get_running_loop().add_reader(self._sock, self._accept)
        self._listening = True

    def shut(self):
        if self._listening:
            self._stop()
            self._sock = _bind(self.host, self.port)

    def drop_connections(self):
        for task in self._tasks:
            task.cancel()

    async def close(self):
        self._stop()
        self.drop_connections()
        if self._tasks:
            await asyncio.wait(self._tasks, timeout=CLOSING_SECONDS)

    def _stop(self):
        if self._listening:
            asyncio.get_running_loop().remove_reader(self._sock)
            self._listening = False
        self._sock.close()

    def _accept(self):
        try:
            sock, _ = self._sock.accept()
        except OSError:
            return
        sock.setblocking(False)
        sock.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        task = asyncio.get_running_loop().create_task(self._guard(sock))
        self._tasks.add(task)
        task.add_done_callback(self._tasks.discard)

    async def _guard(self, sock):
        try:
            await self._serve(sock)
        except (OSError, EOFError, asyncio.TimeoutError):
            pass  # a client that leaves, or that cannot agree on TLS, is everyday business


class _Protocol(asyncio.StreamReaderProtocol):
    """Tells of the connection's end by an event, which any number of waits may share."""

    def __init__(self, reader):
        super().__init__(reader)
        self.lost = asyncio.Event()

    def connection_lost(self, exc):
        super().connection_lost(exc)
        self.lost.set()


async def streams(sock, tls=None):
    """Reader, writer and the event of the connection's end on an accepted socket; with `tls`,
    after the handshake."""
    loop = asyncio.get_running_loop()
    reader = asyncio.StreamReader(limit=LINE_LIMIT)
    protocol = _Protocol(reader)
    bounds = {"ssl_handshake_timeout": HANDSHAKE_SECONDS, "ssl_shutdown_timeout": 1} if tls else {}
    transport, _ = await loop.connect_accepted_socket(lambda: protocol, sock, ssl=tls, **bounds)
    return reader, asyncio.StreamWriter(transport, protocol, reader, loop), protocol.lost


def reset(writer):
    """Ends a connection with RST in place of an orderly goodbye."""
    linger = struct.pack("ii", 1, 0)
    writer.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, linger)
    writer.transport.abort()


async def first_of(*waits):
    """Waits for whichever ends first and calls the others off."""
    tasks = [asyncio.ensure_future(wait) for wait in waits]
    try:
        await asyncio.wait(tasks, return_when=asyncio.FIRST_COMPLETED)
    finally:
        for task in tasks:
            task.cancel()
        await asyncio.gather(*tasks, return_exceptions=True)
