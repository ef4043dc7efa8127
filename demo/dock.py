# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The dock in a running OBS."""

from desktop import Desktop, until
from window import Window

DOCK = "tallyforgeDock"
ROOM = (1020, 400, 860)   # of the dock's window: from the left, width, height


class Dock(Window):
    """The arguments are those of a Desktop."""

    def __init__(self, screen, finder):
        super().__init__(Desktop(screen, finder), DOCK)

    def open(self, room=ROOM):
        """Opens the dock by OBS's menu, and gives it room."""
        until(self.is_open, lambda: self.choose("Docks", "Tallyforge"), "to open the dock")
        self.place(*room)

    def close(self):
        until(lambda: not self.is_open(), lambda: self.choose("Docks", "Tallyforge"), "to close the dock")

    def choose(self, menu, entry):
        """Chooses from one of OBS's menus."""
        if any(widget["class"] == "QMenu" for widget in self.desktop.look()):
            self.key("Escape")
        self.desktop.click_item("QMenuBar", menu)
        self.desktop.click_item("QMenu", entry)
