# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The traffic of one end of a tunnel in one direction, so that both ends can be compared."""

import hashlib
import random
import time


class Flow:
    def __init__(self):
        self.bytes = 0
        self.pieces = 0
        self._digest = hashlib.sha256()
        self._first = self._last = None

    def add(self, data):
        self._last = time.monotonic_ns()
        self._first = self._first or self._last
        self.bytes += len(data)
        self.pieces += 1
        self._digest.update(data)

    def is_of(self, pieces):
        """Whether these bytes, and no others, have passed."""
        digest = hashlib.sha256()
        for piece in pieces:
            digest.update(piece)
        return digest.digest() == self._digest.digest()

    def shown(self):
        return {"bytes": self.bytes, "pieces": self.pieces, "sha256": self._digest.hexdigest(),
                "first_ns": self._first, "last_ns": self._last}


def noise(count, seed, piece):
    """Random bytes in pieces; the same seed gives the same ones."""
    source = random.Random(seed)
    for left in range(count, 0, -piece):
        yield source.randbytes(min(left, piece))
