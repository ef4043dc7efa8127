# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The bytes of the USB line: frames, their CRC, fragments of admin texts, stream messages."""

import binascii
import struct

SYNC = b"\x00TF"
HEADER = 6
TRAILER = 2
PAYLOAD_LIMIT = 2048
TUNNEL_LIMIT = 512         # bytes of a tunnel's data in one frame
FRAGMENT_DATA = PAYLOAD_LIMIT - 3
TEXT_LIMIT = 65535

ENVELOPE, PIPE, CTRL, ADMIN, STREAM = 1, 2, 3, 4, 5
OPEN, OPENED, FAIL, DATA, CLOSE, CREDIT = 1, 2, 3, 4, 5, 6


class WireError(Exception):
    """Bytes that break the line's format. The text names the rule and quotes nothing."""


def crc(payload):
    """CRC-16 with the polynomial 0x1021, begun with all ones, neither reflected nor inverted."""
    return binascii.crc_hqx(payload, 0xFFFF)


def frame(kind, payload):
    if len(payload) > PAYLOAD_LIMIT:
        raise ValueError("the payload is too long for a frame")
    return b"".join((SYNC, struct.pack("<BH", kind, len(payload)), payload,
                     struct.pack("<H", crc(payload))))


def admin_payloads(text, piece=FRAGMENT_DATA, whole=True):
    """The payloads that carry an admin text: itself if it fits, else its fragments."""
    if whole and len(text) <= PAYLOAD_LIMIT:
        return [text]
    if len(text) > TEXT_LIMIT or len(text) > 256 * piece:
        raise ValueError("the text is too long for the line")
    return [struct.pack(">HB", len(text), number) + text[at:at + piece]
            for number, at in enumerate(range(0, len(text), piece))]


def stream_message(stream, kind, payload=b""):
    return bytes((stream, kind)) + payload


class Deframer:
    """Finds the frames in what arrives. Bytes of no frame are counted in `stray`."""

    def __init__(self):
        self._held = bytearray()
        self.stray = 0

    def feed(self, data):
        """The frames that are complete by now, as pairs of type and payload."""
        held = self._held
        held += data
        at, found = 0, []
        while True:
            start = held.find(SYNC, at)
            if start < 0:
                # The last bytes may begin a sync whose rest is still to come.
                start = next((len(held) - n for n in (2, 1)
                              if len(held) - n >= at and held.endswith(SYNC[:n])), len(held))
                self.stray += start - at
                at = start
                break
            self.stray += start - at
            at = start
            if len(held) - at < HEADER:
                break
            kind, length = struct.unpack_from("<BH", held, at + 3)
            end = at + HEADER + length + TRAILER
            if length <= PAYLOAD_LIMIT and len(held) < end:
                break
            payload = bytes(held[at + HEADER:end - TRAILER])
            if length > PAYLOAD_LIMIT or held[end - 2:end] != struct.pack("<H", crc(payload)):
                self.stray += 1
                at += 1
                continue
            found.append((kind, payload))
            at = end
        del held[:at]
        return found


class Texts:
    """Joins the fragments of the host's admin texts; one out of order is refused."""

    def __init__(self):
        self._total = 0
        self._next = 0
        self._parts = b""

    def feed(self, payload):
        """The text that this payload completes, or None."""
        if not self._total and payload[:1] == b"{":
            return payload
        try:
            if len(payload) < 4:
                raise WireError("an admin payload is too short for a fragment with data")
            total, number = struct.unpack_from(">HB", payload)
            if total <= PAYLOAD_LIMIT:
                raise WireError("an admin text that fits one frame came in fragments")
            if number != self._next or self._total not in (0, total):
                raise WireError("an admin fragment is out of order")
            self._total, self._next = total, (number + 1) & 0xFF
            self._parts += payload[3:]
            if len(self._parts) > total:
                raise WireError("the fragments of an admin text carry more than they promised")
            if len(self._parts) < total and len(payload) != PAYLOAD_LIMIT:
                raise WireError("an admin fragment before the last one is not full")
        except WireError:
            self.__init__()
            raise
        if len(self._parts) < total:
            return None
        text = self._parts
        self.__init__()
        return text
