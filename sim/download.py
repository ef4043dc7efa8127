# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A firmware image that a device without a network fetches through its host's tunnel."""

from math import ceil

from cloud import image, image_request

STREAM = "ota"
REASONS = {   # why the stream failed -> what the device makes of it
    "disabled": "The computer does not share its internet connection.",
    "unknown_stream": "The computer knows no way to the update server.",
    "dial_failed": "The computer could not reach the update server.",
}


class Download:
    """Each byte of the stream stands for `pace` bytes of the image, because a host passes no more
    than 12800 bytes in a real second."""

    def __init__(self, tunnel, size, pace):
        self._tunnel = tunnel
        self._size = size
        self._count = max(1, ceil(size / pace))
        self._stream = self._on_change = None
        self._asked = False

    def start(self, on_change):
        """Opens the stream. `on_change` is called whenever it has got further, or has ended."""
        self._on_change = on_change
        self._stream = self._tunnel.streams[self._tunnel.open(STREAM)]
        self._stream.on_change = self._look

    def _look(self):
        if self._stream.state == "open" and not self._asked:
            self._asked = True
            self._tunnel.tell(self._stream.id, image_request(self._count))
        self._on_change()

    @property
    def _received(self):
        return self._stream.received.bytes if self._stream else 0

    @property
    def moved(self):
        return min(self._size, self._received * self._size // self._count)

    @property
    def done(self):
        return self._received >= self._count and not self.error

    @property
    def error(self):
        """Why the image has not come whole, or will not; else empty."""
        stream = self._stream
        if self._received >= self._count:
            return "" if stream.received.is_of(image(self._count)) else "The image is damaged."
        if stream and stream.state == "failed":
            return REASONS[stream.reason]
        return "The connection to the update server was lost." if stream and not stream.alive \
            else ""

    def cancel(self):
        if self._stream:
            self._stream.on_change = None
            if self._stream.alive:
                self._tunnel.close(self._stream.id)
