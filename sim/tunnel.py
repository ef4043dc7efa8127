# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The device's end of its tunnels: its cloud connection's pipe, and streams with credit."""

import asyncio
import struct
import time

import usb_wire as wire
from flow import Flow, noise

CREDIT_LIMIT = 0x1000000   # a host counts no more than this
WINDOW = 16384             # bytes that a stream lets the host send ahead
SLOW_CREDIT, SLOW_SECONDS = 256, 0.1
REASONS = (b"disabled", b"unknown_stream", b"dial_failed")


class TunnelError(Exception):
    """A wish that the tunnel cannot fulfil, told in a sentence."""


class Stream:
    def __init__(self, number, name, window):
        self.id = number
        self.name = name
        self.window = window
        self.state = "dialling"    # "open", "failed", "closed"
        self.reason = None         # why it failed, or which side closed it
        self.credit = 0            # bytes that the host may still send
        self.granted = 0
        self.sent = Flow()
        self.received = Flow()
        self.opened_ns = self.closed_ns = None
        self.on_change = None      # called when it opens, receives data or ends

    def changed(self):
        if self.on_change:
            self.on_change()

    @property
    def alive(self):
        return self.state in ("dialling", "open")

    def end(self, state, reason):
        self.state, self.reason, self.closed_ns = state, reason, time.monotonic_ns()
        self.changed()

    def shown(self):
        return {"name": self.name, "state": self.state, "reason": self.reason,
                "credit": self.credit, "granted": self.granted, "sent": self.sent.shown(),
                "received": self.received.shown(), "opened_ns": self.opened_ns,
                "closed_ns": self.closed_ns}


class Tunnel:
    def __init__(self, port, violation, credit_fault):
        self._port = port
        self._violation = violation
        self._credit_fault = credit_fault   # returns the kind that is on, or None
        self._tasks = set()
        self._last_id = 0
        self.streams = {}
        self.reset_pipe()

    def reset_pipe(self):
        self.pipe_sent, self.pipe_received = Flow(), Flow()

    def reset(self):
        """The line is gone: sending stops, and no stream is left open."""
        for task in self._tasks:
            task.cancel()
        for stream in self.streams.values():
            if stream.alive:
                stream.end("closed", "line")

    def shown(self):
        return {"pipe": {"sent": self.pipe_sent.shown(), "received": self.pipe_received.shown()},
                "streams": {str(number): stream.shown()
                            for number, stream in self.streams.items()}}

    def _start(self, work):
        task = asyncio.get_running_loop().create_task(work)
        self._tasks.add(task)
        task.add_done_callback(self._tasks.discard)

    # Sending

    def send_pipe(self, count, seed, piece, rate):
        self._start(self._send(count, seed, piece, rate, wire.PIPE, b"", self.pipe_sent))

    def send_stream(self, number, count, seed, piece, rate):
        stream = self._live(number)
        self._start(self._send(count, seed, piece, rate, wire.STREAM,
                               bytes((number, wire.DATA)), stream.sent, stream))

    async def _send(self, count, seed, piece, rate, kind, prefix, flow, stream=None):
        for data in noise(count, seed, piece):
            await self._port.room()
            if (stream and not stream.alive) or \
                    not self._port.send(wire.frame(kind, prefix + data)):
                return
            flow.add(data)
            await asyncio.sleep(len(data) / rate if rate else 0)

    # Streams

    def _live(self, number):
        stream = self.streams.get(number)
        if not stream or not stream.alive:
            raise TunnelError("There is no such stream, or it is closed.")
        return stream

    def _message(self, number, kind, payload=b""):
        self._port.send(wire.frame(wire.STREAM, wire.stream_message(number, kind, payload)))

    def tell(self, number, data):
        self._live(number).sent.add(data)
        self._message(number, wire.DATA, data)

    def open(self, name, window=WINDOW):
        for _ in range(255):
            self._last_id = self._last_id % 255 + 1
            if self._last_id not in self.streams or not self.streams[self._last_id].alive:
                break
        else:
            raise TunnelError("All 255 streams are in use.")
        stream = Stream(self._last_id, name, window)
        self.streams[stream.id] = stream
        self._message(stream.id, wire.OPEN, name.encode())
        return stream.id

    def close(self, number):
        self._live(number).end("closed", "device")
        self._message(number, wire.CLOSE)

    def grant(self, number, count):
        stream = self._live(number)
        stream.granted += count
        stream.credit = min(CREDIT_LIMIT, stream.credit + count)
        self._message(number, wire.CREDIT, struct.pack("<I", count))

    def _top_up(self, stream):
        fault = self._credit_fault()
        if not stream.window or stream.state != "open" or fault in ("no-credit", "slow-credit"):
            return
        if fault == "excess-credit":
            self.grant(stream.id, 0xFFFFFFFF)
        elif stream.credit <= stream.window // 2:
            self.grant(stream.id, stream.window - stream.credit)

    async def trickle(self):
        """Grants a little now and then while that fault is on, and all again after it."""
        while True:
            await asyncio.sleep(SLOW_SECONDS)
            for stream in list(self.streams.values()):
                if stream.window and stream.state == "open" and not stream.credit:
                    if self._credit_fault() == "slow-credit":
                        self.grant(stream.id, SLOW_CREDIT)
                    else:
                        self._top_up(stream)

    # Frames from the host

    def pipe_from_host(self, payload):
        if not 1 <= len(payload) <= wire.TUNNEL_LIMIT:
            self._violation("a pipe frame's payload is empty or longer than 512 bytes")
        else:
            self.pipe_received.add(payload)

    def stream_from_host(self, message):
        rule = self._stream_message(message)
        if rule:
            self._violation(rule)

    def _stream_message(self, message):
        """Takes a stream's message; returns the rule that it breaks, if any."""
        if len(message) < 2:
            return "a stream message is shorter than 2 bytes"
        kind, payload = message[1], message[2:]
        stream = self.streams.get(message[0])
        if not stream:
            return "a stream message has an id that was never opened"
        if kind not in (wire.OPENED, wire.FAIL, wire.DATA, wire.CLOSE):
            return "a stream message is of a type that a host never sends"
        if kind in (wire.OPENED, wire.CLOSE) and payload:
            return "a stream message of a type without a payload has one"
        if not stream.alive:
            return None    # it was under way when the device closed the stream
        if kind in (wire.OPENED, wire.FAIL) and stream.state != "dialling":
            return "a stream that is open already was answered again"
        if kind in (wire.DATA, wire.CLOSE) and stream.state != "open":
            return "data or a close came for a stream that was not opened yet"
        return {wire.OPENED: self._opened, wire.FAIL: self._failed, wire.DATA: self._data,
                wire.CLOSE: self._closed}[kind](stream, payload)

    def _opened(self, stream, _):
        stream.state, stream.opened_ns = "open", time.monotonic_ns()
        self._top_up(stream)
        stream.changed()

    @staticmethod
    def _failed(stream, reason):
        if reason not in REASONS:
            return "a stream failed for a reason that is not one of the three"
        stream.end("failed", reason.decode())
        return None

    def _data(self, stream, data):
        if not 1 <= len(data) <= wire.TUNNEL_LIMIT:
            return "a stream's data is empty or longer than 512 bytes"
        if len(data) > stream.credit:
            return "a stream's data goes beyond its credit"
        stream.credit -= len(data)
        stream.received.add(data)
        self._top_up(stream)
        stream.changed()
        return None

    @staticmethod
    def _closed(stream, _):
        stream.end("closed", "host")
