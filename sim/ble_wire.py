# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The bytes of the Bluetooth characteristic: texts that are whole, or in fragments."""

import struct

BRACE, MARKER = 0x7B, 0xFF
REQUEST_LIMIT, TEXT_LIMIT = 8192, 65535
LONG, SHORT = struct.Struct(">BBHH"), struct.Struct(">HB")


class WireError(Exception):
    """Bytes that break the format. The text names the rule and quotes nothing."""


def packets(text, size, number, short):
    """The notifications of at most that many bytes that carry a text: itself if it fits, else its
    fragments, with the short header where that is wanted and possible."""
    if len(text) <= size:
        return [text]
    if len(text) > TEXT_LIMIT:
        raise ValueError("the text is too long for the link")
    pieces = [text[at:at + size - SHORT.size] for at in range(0, len(text), size - SHORT.size)]
    if short and len(pieces) <= 256 and len(text) >> 8 not in (BRACE, MARKER):
        return [SHORT.pack(len(text), index) + piece for index, piece in enumerate(pieces)]
    pieces = [text[at:at + size - LONG.size] for at in range(0, len(text), size - LONG.size)]
    return [LONG.pack(MARKER, number, len(text), index) + piece
            for index, piece in enumerate(pieces)]


class Requests:
    """Joins the fragments of the host's requests; one out of order is refused."""

    def __init__(self, size):
        self._size = size
        self._forget()

    def _forget(self):
        self._number = self._total = self._next = 0
        self._text = b""

    def feed(self, data):
        """The text that this write completes, or None."""
        try:
            return self._take(data)
        except WireError:
            self._forget()
            raise

    def _take(self, data):
        if len(data) > self._size:
            raise WireError("a write is longer than the link takes")
        if data[:1] != b"\xff":
            if self._total:
                raise WireError("a request begins before the one before is complete")
            return data
        if len(data) <= LONG.size:
            raise WireError("a fragment has no data")
        _, number, total, index = LONG.unpack_from(data)
        if index == 0 and not self._total:
            self._number, self._total = number, total
        if (number, total, index) != (self._number, self._total, self._next) or not number:
            raise WireError("a fragment is out of order")
        if not self._size < total <= REQUEST_LIMIT:
            raise WireError("a request in fragments is too short or too long for them")
        self._next += 1
        self._text += data[LONG.size:]
        if len(self._text) > total or (len(self._text) < total and len(data) < self._size):
            raise WireError("a fragment is not as long as it must be")
        if len(self._text) < total:
            return None
        text = self._text
        self._forget()
        return text
