# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A pseudo-terminal that stands at a serial port's path, comes and goes like a plugged cable."""

import asyncio
import os
import tty
from collections import deque

from net import ListenError, log

READ_BYTES = 65536
BUFFER_LIMIT = 16384   # bytes that wait beyond the terminal's own buffer; more are dropped


class Port:
    """The device's end of one serial line.

    The terminal keeps the claim and the settings of the last host, so each opening by a
    host gets a fresh one: `on_closed` tells that the host is gone and a new one stands there."""

    def __init__(self, path, on_bytes, on_closed):
        self.path = path
        self.heard = False       # whether the host that has it open has sent anything yet
        self.opens = 0           # how many hosts have been heard so far
        self.dropped = 0         # frames that found no room
        self._on_bytes = on_bytes
        self._on_closed = on_closed
        self._master = None
        self._slave = None
        self._waiting = deque()  # of [bytes, what to call right before the first is written]
        self._waiting_bytes = 0
        self._room = asyncio.Event()
        self._room.set()
        self._deaf = False
        self._terminal = None    # the one to which we have made the path lead

    @property
    def plugged(self):
        return self._master is not None

    def plug(self):
        if not self.plugged:
            self._open()
            log(f"usb: {self.path} is there")

    def unplug(self):
        if self.plugged:
            if self._is_ours():
                os.unlink(self.path)
            self._close()
            log(f"usb: {self.path} is gone")

    def _open(self):
        try:
            self._master, self._slave = os.openpty()
            # Our own hold on the host's end keeps the line from counting as hung up until the
            # host has it open, which its first bytes tell.
            tty.setraw(self._slave)
            os.set_blocking(self._master, False)
            self._stand_at_path(os.ttyname(self._slave))
        except OSError as error:
            self._close()
            raise ListenError(f"The serial port {self.path} could not be made: "
                              f"{error.strerror}.") from error
        except ListenError:
            self._close()
            raise
        if not self._deaf:
            asyncio.get_running_loop().add_reader(self._master, self._read)

    def _stand_at_path(self, terminal):
        old = os.readlink(self.path) if os.path.islink(self.path) else None
        left_over = old and old.startswith("/dev/pts/") and not os.path.exists(old)
        if os.path.lexists(self.path) and not left_over and not self._is_ours():
            raise ListenError(f"There is something at {self.path} already. Give another path, "
                              "or remove it if it is left over.")
        new = f"{self.path}.new{os.getpid()}"
        os.symlink(terminal, new)
        os.replace(new, self.path)
        self._terminal = terminal

    def _is_ours(self):
        return os.path.islink(self.path) and os.readlink(self.path) == self._terminal

    def _close(self):
        loop = asyncio.get_running_loop()
        for end in (self._master, self._slave):
            if end is not None:
                loop.remove_reader(end)
                loop.remove_writer(end)
                os.close(end)
        self._master = self._slave = None
        self.heard = False
        self._waiting.clear()
        self._waiting_bytes = 0
        self._room.set()

    def set_deaf(self, deaf):
        """While deaf, the host's bytes are left in the terminal until it is full."""
        if deaf != self._deaf and self.plugged:
            loop = asyncio.get_running_loop()
            if deaf:
                loop.remove_reader(self._master)
            else:
                loop.add_reader(self._master, self._read)
        self._deaf = deaf

    def _read(self):
        try:
            data = os.read(self._master, READ_BYTES)
        except BlockingIOError:
            return
        except OSError:
            data = b""
        if not data:
            self._hung_up()
            return
        if self._slave is not None:
            os.close(self._slave)
            self._slave = None
        self.opens += not self.heard
        self.heard = True
        self._on_bytes(data)

    def _hung_up(self):
        log(f"usb: the host on {self.path} has gone")
        self._close()
        self._on_closed()
        try:
            self._open()
        except ListenError as error:
            log(str(error))

    # Sending

    def send(self, data, on_write=None):
        """Sends bytes, or drops them if no host listens or there is no room; returns which."""
        if not self.heard or self._waiting_bytes + len(data) > BUFFER_LIMIT:
            self.dropped += self.heard
            return False
        self._waiting.append([data, on_write])
        self._waiting_bytes += len(data)
        if len(self._waiting) == 1:
            self._write()
        self._mark_room()
        return self.plugged

    def _write(self):
        while self._waiting:
            entry = self._waiting[0]
            if entry[1]:
                entry[1]()
                entry[1] = None
            try:
                done = os.write(self._master, entry[0])
            except BlockingIOError:
                done = 0
            except OSError:
                done = len(entry[0])   # hung up: the read side tells so
            self._waiting_bytes -= done
            if done < len(entry[0]):
                entry[0] = entry[0][done:]
                asyncio.get_running_loop().add_writer(self._master, self._write)
                break
            self._waiting.popleft()
        else:
            asyncio.get_running_loop().remove_writer(self._master)
        self._mark_room()

    def _mark_room(self):
        # Half of the buffer is left to frames that cannot wait.
        if self._waiting_bytes <= BUFFER_LIMIT // 2:
            self._room.set()
        else:
            self._room.clear()

    async def room(self):
        """Returns when there is room for a frame, or when the line is gone."""
        while not self._room.is_set():
            await self._room.wait()
