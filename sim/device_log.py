# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's own log, which any signed-in user may read."""

KEPT_LINES = 200
REPLY_LIMIT = 63000        # bytes of it that fit into a reply on a cable or over Bluetooth
FILLER = "    12.345 the scoreboard is read, and this line is as long as lines of a log often are\n"


class DeviceLog:
    def __init__(self):
        self.clear()

    def clear(self):
        self._lines = []
        self.wished_bytes = None   # how long it shall be; None: as long as its lines are

    def note(self, uptime, text):
        self._lines.append(f"{uptime:10.3f} {text}")
        del self._lines[:-KEPT_LINES]

    def text(self):
        """The newest lines, as many as a reply has room for."""
        text = "\n".join(self._lines)
        if self.wished_bytes is not None:
            text = (FILLER * (self.wished_bytes // len(FILLER) + 1))[:self.wished_bytes]
        if len(text) <= REPLY_LIMIT:
            return text
        return text[text.index("\n", len(text) - REPLY_LIMIT) + 1:]
