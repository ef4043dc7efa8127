# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A host at the other end of the simulator's serial port, with a codec of its own."""

import fcntl
import json
import os
import select
import termios
import time

from support import PATIENCE

HELLO = {"t": "hello", "streams": 1}


def crc(data):
    value = 0xFFFF
    for byte in data:
        value ^= byte << 8
        for _ in range(8):
            value = (value << 1 ^ (0x1021 if value & 0x8000 else 0)) & 0xFFFF
    return value


def frame(kind, payload):
    return (b"\0TF" + bytes([kind]) + len(payload).to_bytes(2, "little") + payload
            + crc(payload).to_bytes(2, "little"))


def compact(message):
    return json.dumps(message, separators=(",", ":")).encode()


class UsbHost:
    def __init__(self, path, hello=HELLO):
        self.handle = os.open(path, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)
        fcntl.ioctl(self.handle, termios.TIOCEXCL)
        self._bytes = b""
        self._frames = []
        self._number = 0
        if hello:
            self.ctrl(hello)

    def close(self):
        if self.handle is not None:
            os.close(self.handle)
            self.handle = None

    def write(self, data):
        while data:
            select.select([], [self.handle], [], PATIENCE)
            data = data[os.write(self.handle, data):]

    def ctrl(self, message):
        self.write(frame(3, compact(message)))

    def _read(self, seconds):
        """Reads what is there, within these seconds; raises EOFError once the port is gone."""
        if not select.select([self.handle], [], [], max(0, seconds))[0]:
            raise TimeoutError
        try:
            data = os.read(self.handle, 65536)
        except OSError:
            data = b""
        if not data:
            raise EOFError
        self._bytes += data
        while (start := self._bytes.find(b"\0TF")) >= 0:
            self._bytes = self._bytes[start:]
            length = int.from_bytes(self._bytes[4:6], "little")
            if len(self._bytes) < length + 8 and length <= 2048:
                return
            end = self._bytes[:length + 8]
            if length <= 2048 and int.from_bytes(end[-2:], "little") == crc(end[6:-2]):
                self._frames.append((end[3], end[6:-2]))
                self._bytes = self._bytes[length + 8:]
            else:
                self._bytes = self._bytes[1:]

    def frames(self, *kinds, seconds=PATIENCE):
        """Yields the payloads of these kinds of frames as they come."""
        end = time.monotonic() + seconds
        while True:
            for found in [entry for entry in self._frames if entry[0] in kinds]:
                self._frames.remove(found)
                yield found[1]
            self._read(end - time.monotonic())

    def message(self, kind, wanted=lambda _: True, seconds=PATIENCE):
        """The next JSON message in a frame of this kind that fits."""
        return next(m for m in map(json.loads, self.frames(kind, seconds=seconds)) if wanted(m))

    def request(self, method, params):
        self._number += 1
        self.write(frame(4, compact({"id": self._number, "method": method, "params": params})))

    def call(self, method, **params):
        """The result of a request, or the error's code as a text."""
        self.request(method, params)
        reply = self.message(4)
        assert reply["id"] == self._number, reply
        return reply["result"] if reply["ok"] else reply["error"]["code"]
