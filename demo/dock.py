# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The dock in a running OBS, used as a user does: with the mouse and the keyboard alone."""

import contextlib
import json
import socket

from obs_session import Timeout, wait_until

DOCK = "tallyforgeDock"
ROOM = (1020, 400, 860)   # of the dock's window: from the left, width, height
FRAME = 8               # pixels that it may take on both sides
TRIES, TRY_SECONDS = 3, 3
BOX = 10                # pixels to the middle of a check box
STEPS = 40              # of the wheel, from one end of the page to the other and more


def middle(rect):
    x, y, width, height = rect
    return x + width // 2, y + height // 2


class Dock:
    """finder is the socket of the module in tests/dock_finder, which must be installed."""

    def __init__(self, screen, finder):
        self._screen = screen
        self._finder = str(finder)

    # What is to be seen

    def look(self, root="*"):
        """All visible widgets below the one of that name, or in all windows."""
        with socket.socket(socket.AF_UNIX) as client:
            client.settimeout(20)
            client.connect(self._finder)
            client.sendall(root.encode() + b"\n")
            answer = b"".join(iter(lambda: client.recv(1 << 16), b""))
        return json.loads(answer)

    def page(self, measured=False):
        """The dock's named widgets, measured with the least sizes that they need."""
        root = "measure " + DOCK if measured else DOCK
        return {widget["name"]: widget for widget in self.look(root)}

    def widget(self, name):
        """One of the dock's, None while it isn't visible."""
        return next(iter(self.look(name)), None)

    def text(self, name):
        widget = self.widget(name)
        return widget and widget["text"]

    def focus(self):
        """The name of the widget that takes the keys."""
        return next((name for name, widget in self.page().items() if widget["focus"]), None)

    def wait_for(self, name, timeout=10, **wanted):
        """Waits until a widget is visible and these of its properties are as wanted."""
        def is_so():
            widget = self.widget(name)
            return widget if widget and wanted.items() <= widget.items() else None
        try:
            return wait_until(is_so, timeout)
        except Timeout:
            raise Timeout(f"Waited {timeout} seconds in vain for {name} with {wanted}; it is "
                          f"{self.widget(name)}.") from None

    def wait_for_text(self, name, text, timeout=10):
        return self.wait_for(name, timeout, text=text)

    def wait_until_gone(self, name, timeout=10):
        wait_until(lambda: not self.widget(name), timeout, f"{name} to go")

    def window(self, title):
        """The widgets of the window whose title begins so, None while there is none."""
        return [w for w in self.look() if w["window"].startswith(title)] or None

    # What a user does

    def _xdotool(self, *words):
        return self._screen.xdotool(*words)

    def open(self, room=ROOM):
        """Opens the dock by OBS's menu, and gives it room."""
        self.until(lambda: self.widget(DOCK), lambda: self.choose("Docks", "Tallyforge"), "the dock")
        self.place(*room)

    def close(self):
        self.until(lambda: not self.widget(DOCK), lambda: self.choose("Docks", "Tallyforge"),
                   "to close the dock")

    @staticmethod
    def until(condition, action, what):
        """Does something again when it has no effect, as a user would: the window manager and OBS
        may still be at work on their windows, and a busy X server loses an event at times."""
        for _ in range(TRIES):
            with contextlib.suppress(Timeout):
                if found := condition():   # of the try before, late
                    return found
                action()
                return wait_until(condition, TRY_SECONDS)
        raise Timeout(f"Tried {TRIES} times in vain: {what}.")

    def choose(self, menu, entry):
        """Chooses from one of OBS's menus."""
        self.key("Escape")   # whatever is open
        for kind, text in (("QMenuBar", menu), ("QMenu", entry)):
            place = wait_until(lambda: self._item(kind, text), TRY_SECONDS, text)
            self.click_at(*middle(place))

    def _item(self, kind, text):
        return next((item["rect"] for widget in self.look() if widget["class"] == kind
                     for item in widget.get("items", []) if item["text"] == text), None)

    def place(self, x, width, height, y=20):
        """Moves and sizes the dock's own window, as by its frame."""
        window = self.widget(DOCK)["window_id"]

        def is_placed():
            rect = self.widget(DOCK)["rect"]
            return abs(rect[0] - x) < FRAME and abs(rect[2] - width) < FRAME
        self.until(is_placed, lambda: self._xdotool(
            "windowmove", window, x, y, "windowsize", window, width, height), "to place the dock")

    def click_at(self, x, y, button=1):
        self._xdotool("mousemove", x, y, "click", button)

    def click(self, name):
        widget = self.bring_into_view(name)
        x, y = middle(widget["seen"])
        if "checked" in widget and "Button" not in widget["class"]:   # a box is at one end of its row
            is_mirrored = widget["layoutDirection"] == "RightToLeft"
            x = widget["seen"][0] + (widget["seen"][2] - BOX if is_mirrored else BOX)
        self.click_at(x, y)

    def toggle(self, name):
        """Checks a check box, or clears it."""
        wanted = not self.wait_for(name)["checked"]
        self.until(lambda: self.wait_for(name)["checked"] == wanted, lambda: self.click(name),
                    f"to toggle {name}")

    def bring_into_view(self, name):
        """Scrolls with the wheel until a widget is wholly in view."""
        widget = self.wait_for(name)
        for _ in range(STEPS):
            if widget["seen"][2:] == widget["rect"][2:]:
                return widget
            page = self.widget(DOCK)["rect"]
            is_above = widget["rect"][1] < page[1]
            self.click_at(*middle(page), button=4 if is_above else 5)
            before = widget["rect"]
            widget = self.wait_for(name)
            if widget["rect"] == before:
                widget = self.wait_for(name)
        return widget

    def key(self, *names):
        self._xdotool("key", *names)

    def type(self, text):
        """Replaces what stands in the field that has the focus."""
        def is_there():
            return any(w["focus"] and w.get("text") == text for w in self.page().values())

        def replace():
            self.key("ctrl+a", "Delete")
            self._xdotool("type", text)
        self.until(is_there, replace, f"to type into {self.focus()}")

    def fill(self, name, text):
        self.until(lambda: self.widget(name)["focus"], lambda: self.click(name), f"to enter {name}")
        self.type(text)

    def open_list(self, name, item):
        """Opens the list of a combo box; returns where an item of it is."""
        return self.until(lambda: self._item("QComboBoxListView", item), lambda: self.click(name),
                           f"to open the list with {item}")

    def pick(self, name, item):
        place = self.open_list(name, item)
        # Right after it has opened, the list takes no click where the one that opened it was.
        self.until(lambda: not self._item("QComboBoxListView", item),
                   lambda: self.click_at(*middle(place)), f"to pick {item}")
        self.wait_for(name, currentText=item)

    def press(self, title, text):
        """Clicks a button of another window."""
        def button():
            return next((w for w in self.window(title) or []
                         if "Button" in w["class"] and w.get("text", "").replace("&", "") == text), None)
        self.click_at(*middle(wait_until(button, what=f"{text} in {title}")["seen"]))
