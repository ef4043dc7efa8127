# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's live feed: JSON lines over TLS on the local network."""

import asyncio
import json
import time
from collections import deque

from net import Listener, first_of, log, reset, streams
from venue import now_ms, same_secret

AUTH_SECONDS = 10
HEARTBEAT_SECONDS = 1.0
PIECE_BYTES = 5
PIECE_SECONDS = 0.001
BACKLOG_LIMIT = 1 << 20
NOISE = b'%% scoreboard noise %%\r\n["state", {"home_score": 99}]\r\n\r\n\xff\xfe\xc3\x28\r\n'


def _line(message):
    return json.dumps(message, separators=(",", ":")).encode() + b"\r\n"


def _token(line):
    """The token of an auth line; raises ValueError with the rule that the line breaks."""
    if not line.endswith(b"\r\n"):
        raise ValueError("the auth line does not end with CR LF")
    try:
        text = line[:-2].decode()
        message = json.loads(text)
    except (ValueError, RecursionError):
        raise ValueError("the first line is not JSON") from None
    if not isinstance(message, dict) or set(message) != {"type", "token"}:
        raise ValueError("the first line is not an object of type and token alone")
    if message["type"] != "auth" or not isinstance(message["token"], str):
        raise ValueError("the first line is not of type auth with a text as token")
    if text not in (json.dumps(message, separators=(",", ":"), ensure_ascii=ascii_only)
                    for ascii_only in (True, False)):
        raise ValueError("the auth line is not compact JSON")
    return message["token"]


class Client:
    """One authenticated connection, and the bytes that are still to be written to it."""

    def __init__(self, writer):
        self.writer = writer
        self.token = None       # the one that it was let in with
        self.held = []          # lines held back until another joins them, with their revisions
        self.pieces = deque()   # of split lines
        self.dripping = None
        self.leaving = None     # the task of the goodbye, kept so that it lives

    def drip(self, data):
        self.pieces.extend(data[n:n + PIECE_BYTES] for n in range(0, len(data), PIECE_BYTES))
        if not self.dripping:
            self.dripping = asyncio.get_running_loop().create_task(self._drip())

    async def _drip(self):
        while self.pieces and not self.writer.is_closing():
            self.writer.write(self.pieces.popleft())
            await asyncio.sleep(PIECE_SECONDS)
        self.dripping = None

    async def goodbye(self):
        """Closes in an orderly way, after the pieces that are still to go out."""
        if self.dripping:
            await asyncio.wait([self.dripping])
        self.writer.close()


class Feed:
    def __init__(self, venue, faults, device, port, tls):
        self._venue = venue
        self._faults = faults
        self._device = device
        self._tls = tls
        self._clients = set()
        self._fault_over = asyncio.Event()
        self.is_served = lambda: True   # whether the device offers its feed at all
        self.listener = Listener(device.address, port, self._serve)
        device.port = self.listener.port

    @property
    def _fault(self):
        return self._faults.feed.get(self._device.id)

    def apply_faults(self, before=None, passing=None):
        """Brings listener and connections in line with the fault, after it was `before`."""
        kind = self._fault
        if kind != before:
            self._fault_over.set()
            self._fault_over = asyncio.Event()
            for client in self._clients:
                self._write(client, [])   # sends the line that was held back
                if before == "freeze":
                    self._send_state(client)
                if kind == "late-auth-fail":
                    self._expel(client)
        served = self.is_served()
        if kind in ("refuse", "away") or not served:
            self.listener.shut()
        else:
            self.listener.open()
        if kind == "away" or passing == "drop" or not served:
            self.listener.drop_connections()
        elif passing == "reset":
            for client in self._clients:
                reset(client.writer)

    def look_again(self, *_):
        """The device may have gone down or come up, or its feed was switched on or off."""
        self.apply_faults(self._fault)

    def end_old_tokens(self):
        """Clients whose token holds no longer are cut off, without a word."""
        for client in list(self._clients):
            if client.token != self._device.token:
                client.writer.close()

    async def _serve(self, sock):
        self._device.feed_connects += 1
        if self._fault in ("hang-handshake", "plain"):
            await self._without_tls(sock)
            return
        reader, writer, lost = await streams(sock, self._tls)
        client = Client(writer)
        try:
            if await self._authenticated(reader, client, lost):
                await self._live(reader, client)
            await client.goodbye()
            await lost.wait()
        except asyncio.CancelledError:
            writer.close()   # dropped on purpose: the client still gets an orderly goodbye
            await lost.wait()
        finally:
            writer.transport.abort()

    async def _without_tls(self, sock):
        reader, writer, _ = await streams(sock)
        if self._fault == "plain":
            writer.write(_line({"type": "auth_ok"}))
        await first_of(reader.read(), self._fault_over.wait())
        writer.transport.abort()

    async def _authenticated(self, reader, client, lost):
        try:
            token = _token(await asyncio.wait_for(reader.readuntil(b"\n"), AUTH_SECONDS))
        except asyncio.IncompleteReadError as error:
            if error.partial:
                self._violation("the connection ended within the auth line")
            return False
        except (ValueError, asyncio.LimitOverrunError, asyncio.TimeoutError) as error:
            told = isinstance(error, ValueError) and str(error)
            self._violation(told or "no auth line came in time, or an endless one")
            client.writer.write(_line({"type": "auth_fail"}))
            return False
        if self._fault == "silent":
            await first_of(lost.wait(), self._fault_over.wait())
            return False
        if self._fault == "reject" or not same_secret(token, self._device.token):
            log(f"feed {self._device.id}: a token was refused")
            client.writer.write(_line({"type": "auth_fail"}))
            return False
        client.token = token
        return True

    async def _live(self, reader, client):
        device = self._device
        device.feed_auths += 1
        device.feed_clients += 1
        log(f"feed {device.id}: a client is connected")
        try:
            self._send(client, {"type": "auth_ok"}, even_frozen=True)
            self._clients.add(client)
            self._send_state(client)
            if self._fault == "late-auth-fail":
                self._expel(client)
            if await reader.read(1):
                self._violation("the client sent more than its auth line")
        finally:
            self._clients.discard(client)
            device.feed_clients -= 1
            log(f"feed {device.id}: a client has gone")

    def _violation(self, reason):
        self._venue.violation(f"feed {self._device.id}: {reason}")

    def _expel(self, client):
        self._write(client, [(_line({"type": "auth_fail"}), 0)])
        client.leaving = asyncio.get_running_loop().create_task(client.goodbye())

    # Sending

    def publish(self):
        """Sends the present state to every client; returns when the first write began, or None."""
        moments = [self._send_state(client) for client in list(self._clients)]
        return next((moment for moment in moments if moment), None)

    def _send_state(self, client):
        return self._send(client, self._device.envelope(), self._device.revision)

    async def heartbeats(self):
        while True:
            await asyncio.sleep(HEARTBEAT_SECONDS)
            self._device.seq += 1
            for client in list(self._clients):
                self._send(client, {"type": "heartbeat", "seq": self._device.seq,
                                    "ts_ms": now_ms()})

    def _send(self, client, message, revision=0, even_frozen=False):
        kind = self._fault
        if kind == "freeze" and not even_frozen:
            return None
        data = (NOISE if kind == "garbage" else b"") + _line(message)
        client.held.append((data, revision))
        if kind == "join" and len(client.held) < 2:
            return None
        return self._write(client, [])

    def _write(self, client, lines):
        """Writes the line that was held back and these in one go; returns when that began."""
        lines = client.held + lines
        client.held = []
        transport = client.writer.transport
        if not lines or transport.is_closing():
            return None
        if transport.get_write_buffer_size() > BACKLOG_LIMIT:
            log(f"feed {self._device.id}: a client that does not read was dropped")
            transport.abort()
            return None
        data = b"".join(line for line, _ in lines)
        revision = max(revision for _, revision in lines)
        moment = time.monotonic_ns()
        if self._fault == "split" or client.pieces:
            client.drip(data)
        else:
            client.writer.write(data)
        if revision:
            self._device.feed_sent.add(revision, moment)
        return moment
