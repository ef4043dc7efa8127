# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What a running OBS shows on a screen, and a mouse and a keyboard that see that OBS has heard them."""

import contextlib
import json
import socket

from obs_session import Timeout, wait_until

TRIES = 5
ARRIVAL_SECONDS = 3   # of an OBS that answers: a click that is later than that went to something else
WHEEL_UP, WHEEL_DOWN = 4, 5
FRAME = 8   # pixels that the frame of a window may take on both sides


def env(built, socket_path):
    """What OBS needs in its environment for a Desktop; built is the folder of the finder."""
    return {"DOCK_FINDER_SOCKET": str(socket_path), "LD_PRELOAD": str(built / "data/keep-events.so")}


def middle(rect):
    x, y, width, height = rect
    return x + width // 2, y + height // 2


class Desktop:
    """finder is the socket of the module in tests/dock_finder, which must be installed in an OBS that
    has env() in its environment."""

    def __init__(self, screen, finder):
        self._screen = screen
        self._finder = str(finder)
        self.clicks = self.texts = 0   # that were made and typed

    def _ask(self, root="", measured=False, **more):
        with socket.socket(socket.AF_UNIX) as client:
            client.settimeout(30)
            client.connect(self._finder)
            client.sendall(json.dumps({"root": root, "measure": measured} | more).encode() + b"\n")
            answer = b"".join(iter(lambda: client.recv(1 << 16), b""))
        return json.loads(answer)

    def look(self, root="*", measured=False):
        """All visible widgets below the one of that name, or in all windows. Measured they also tell
        the least sizes that they need."""
        return self._ask(root, measured)["widgets"]

    def _heard(self):
        return self._ask()["heard"]

    @contextlib.contextmanager
    def watch_main_thread(self):
        """Gives a dictionary that in the end holds milliseconds, without those that it took to answer
        questions: "waited", how long each of a thousand knocks a second waited until OBS's main
        thread came to them, "used", the processor time between two of these moments, and "shown", how old
        each of the times was that the only live text came to show."""
        held = {}
        self._ask(watch=True)
        yield held
        held.update(self._ask(watch=False))

    def _use(self, kind, count, *words):
        """Uses the mouse or the keyboard; returns what OBS has heard once all of it has arrived.

        Windows that come, go or change places can take a click or a key away from OBS. A repetition
        does no harm if OBS has heard nothing of the first time."""
        for _ in range(TRIES):
            before = self._heard()[kind]
            self._screen.xdotool(*words)

            def all_of_it():
                heard = self._heard()
                return heard if heard[kind] >= before + count else None
            try:
                return wait_until(all_of_it, ARRIVAL_SECONDS)
            except Timeout:
                if self._heard()[kind] != before:
                    raise Timeout(f"OBS has heard only a part of {words}.") from None
        raise Timeout(f"OBS has heard nothing of {words}.")

    def click_at(self, x, y):
        """Returns the ids of the widgets that the click went to, with those around them."""
        self.clicks += 1
        return self._use("clicks", 1, "mousemove", x, y, "click", 1)["pressed"]

    def click(self, find, place=lambda widget: middle(widget["seen"])):
        """Clicks a widget at a place of it. find() gives the widget, or None as long as there is none;
        it may come to lie elsewhere until the click arrives."""
        def settled():
            widget = find()
            return widget if widget and widget == find() else None
        for _ in range(TRIES):
            widget = wait_until(settled, what="a widget that stays where it is")
            if widget["id"] in self.click_at(*place(widget)):
                return
        raise Timeout(f"Clicks on {widget} went elsewhere {TRIES} times.")

    def click_item(self, kind, text):
        """Clicks a row, a tab or an entry of a widget of this class."""
        def find():
            return next((w for w in self.look() if w["class"] == kind and self.item(w, text)), None)
        self.click(find, lambda widget: middle(self.item(widget, text)["rect"]))

    @staticmethod
    def item(widget, text):
        return next((item for item in widget.get("items", []) if item["text"] == text), None)

    def find_item(self, kind, text):
        """What a visible widget of this class tells of its item, None if there is none."""
        found = (self.item(widget, text) for widget in self.look() if widget["class"] == kind)
        return next(filter(None, found), None)

    def wheel(self, x, y, button):
        self._use("wheels", 1, "mousemove", x, y, "click", button)

    def keys(self, *names):
        """Presses keys, each alone or with others: "Tab", "shift+Tab"."""
        self._wait_until_active()
        for name in names:
            self._use("keys", 1, "key", name)

    def type(self, text):
        self._wait_until_active()
        self.texts += 1
        self._use("keys", len(text), "type", text)

    def _wait_until_active(self):
        wait_until(lambda: self._heard()["active"], what="a window of OBS that takes the keys")

    def place(self, find, x, y, width, height):
        """Moves and sizes a window, as by its frame. find() gives the widget that is the window."""
        def is_placed():
            rect = find()["rect"]
            return abs(rect[0] - x) < FRAME and abs(rect[2] - width) < FRAME
        until(is_placed, lambda: self._screen.xdotool(
            "windowmove", find()["window_id"], x, y, "windowsize", find()["window_id"], width, height),
            "to place a window")


def until(condition, action, what):
    """Repeats an action, which must do no harm, while it has no effect: the window manager and OBS may
    still be at work on their windows."""
    for _ in range(TRIES):
        if found := condition():   # of the try before, late
            return found
        action()
        try:
            return wait_until(condition, ARRIVAL_SECONDS)
        except Timeout:
            continue
    raise Timeout(f"Tried {TRIES} times in vain: {what}.")
