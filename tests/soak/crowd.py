# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Programs that read the live scores from the plug-in's TCP port: one that watches whose they are, and
some that behave badly."""

import contextlib
import json
import socket
import threading

PORT = 9001
HOST = "127.0.0.1"


def owner_of(score):
    """The devices' scores never meet: those of the second are 500 and above."""
    return "TF-1002" if score >= 500 else "TF-1001"


class Witness:
    """Reads all snapshots and notes each in which a device's score stands under another's name."""

    def __init__(self, labels):
        self._labels = labels   # label of each device, by id
        self.snapshots = 0
        self.wrong = []
        self._socket = socket.create_connection((HOST, PORT), timeout=30)
        self._socket.settimeout(None)
        self._reading = threading.Thread(target=self._read, daemon=True)
        self._reading.start()

    def _read(self):
        with contextlib.suppress(OSError), self._socket.makefile(encoding="utf-8") as lines:
            for line in lines:
                self._judge(json.loads(line))

    def _judge(self, snapshot):
        self.snapshots += 1
        score = snapshot["fields"].get("home_score")
        if score is None:
            return
        device = owner_of(int(score))
        if snapshot["source"] not in (device, self._labels[device]):
            self.wrong.append(f"{score} of {device} stands under {snapshot['source']}")

    def close(self):
        with contextlib.suppress(OSError):
            self._socket.shutdown(socket.SHUT_RDWR)
        self._socket.close()
        self._reading.join(5)


def visit(rng):
    """Some that ask and go, one that leaves in the middle of a word, one that floods, and one that never
    reads. They are gone in the end."""
    with contextlib.ExitStack() as stack:
        def program():
            return stack.enter_context(socket.create_connection((HOST, PORT), timeout=30))
        for _ in range(rng.randint(2, 8)):
            asker = program()
            asker.sendall(b"status\n")
            lines = map(json.loads, asker.makefile(encoding="utf-8"))
            next(line for line in lines if "ok" in line)
        program().sendall(b'{"op":"sta')
        with contextlib.suppress(ConnectionError):   # it is thrown out
            program().sendall(b"x" * (1 << 20))
        silent = program()
        with contextlib.suppress(ConnectionError):
            silent.sendall(b"get\n" * 2000)
