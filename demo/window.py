# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""One of OBS's windows or docks, used as a user does: with the mouse and the keyboard alone."""

from desktop import WHEEL_DOWN, WHEEL_UP, until
from obs_session import PATIENCE, Timeout, wait_until

BOX = 10     # pixels to the middle of a check box
STEPS = 40   # of the wheel, from one end of the page to the other and more


class NotVisible(Exception):
    """A control was asked for what it shows while it isn't there, or not yet."""


def is_as(widget, wanted):
    """Whether the properties are as wanted: each equal to a value, or such that a function holds."""
    return all(name in widget and (want(widget[name]) if callable(want) else widget[name] == want)
               for name, want in wanted.items())


def has(part):
    """For wait_for: a text with this part in it."""
    return lambda text: part in text


class Window:
    """All but windows() speaks of the widgets below the one whose object name is root."""

    def __init__(self, desktop, root):
        self.desktop = desktop
        self.root = root

    # The texts that are to be seen

    def look(self, root=None):
        return self.desktop.look(root or self.root)

    def is_open(self):
        return bool(self.look())

    def page(self, measured=False):
        """The named widgets, measured with the least sizes that they need."""
        return {widget["name"]: widget for widget in self.desktop.look(self.root, measured)}

    def widget(self, name):
        """What a control shows, None while it isn't visible."""
        return next((widget for widget in self.look() if widget["name"] == name), None)

    def find(self, name):
        """What a control shows; it must be visible."""
        widget = self.widget(name)
        if not widget:
            raise NotVisible(f"{name} is not visible in {self.root}.")
        return widget

    def text(self, name):
        return self.find(name)["text"]

    def rows(self, name):
        """The texts of a table, row by row."""
        return [item["cells"] for item in self.find(name).get("items", [])]

    def items(self, name):
        """The entries of a combo box, the tabs of a bar, the first column of a list."""
        return [item["text"] for item in self.find(name).get("items", [])]

    def focus(self):
        """The name of the widget that takes the keys."""
        return next((name for name, widget in self.page().items() if widget["focus"]), None)

    def wait_for(self, name, timeout=PATIENCE, **wanted):
        """Waits until a control is visible and these of its properties are as wanted: a value, or a
        function that judges it. Returns what the control shows then."""
        def is_so():
            widget = self.widget(name)
            return widget if widget and is_as(widget, wanted) else None
        try:
            return wait_until(is_so, timeout)
        except Timeout:
            raise Timeout(f"Waited {timeout} seconds in vain for {name} with {wanted}; it is "
                          f"{self.widget(name) or 'not visible'}.") from None

    def wait_for_text(self, name, text, timeout=PATIENCE):
        """text is the whole one, or a function that judges it, such as has(part)."""
        return self.wait_for(name, timeout, text=text)

    def wait_until_gone(self, name, timeout=PATIENCE):
        wait_until(lambda: not self.widget(name), timeout, f"{name} to go")

    def wait_until_closed(self, timeout=PATIENCE):
        wait_until(lambda: not self.is_open(), timeout, f"{self.root} to close")

    # What a user does

    def click(self, name):
        self.bring_into_view(name)

        def place(widget):
            x, y, width, height = widget["seen"]
            if "checked" in widget and "Button" not in widget["class"]:   # it is at one end of its row
                is_mirrored = widget["layoutDirection"] == "RightToLeft"
                return x + (width - BOX if is_mirrored else BOX), y + height // 2
            return x + width // 2, y + height // 2
        self.desktop.click(lambda: self.widget(name), place)

    def bring_into_view(self, name):
        """Scrolls with the wheel until a control is wholly in view, as far as that goes."""
        widget = self.wait_for(name)
        for _ in range(STEPS):
            if widget["seen"][2:] == widget["rect"][2:] or "viewport" not in widget:
                break
            x, y, width, height = widget["viewport"]
            is_above = widget["rect"][1] < y
            self.desktop.wheel(x + width // 2, y + height // 2, WHEEL_UP if is_above else WHEEL_DOWN)
            widget = self.wait_for(name)

    def key(self, *names):
        self.desktop.keys(*names)

    def toggle(self, name):
        """Checks a check box, or clears it."""
        wanted = not self.wait_for(name)["checked"]
        self.click(name)
        self.wait_for(name, checked=wanted)

    def type(self, text):
        """Replaces what stands in the field that has the focus."""
        def is_there():
            return any(w["focus"] and text in (w.get("text"), w.get("currentText"))
                       for w in self.look())

        def replace():
            self.key("ctrl+a", "Delete")
            self.desktop.type(text)
        until(is_there, replace, f"to type into {self.focus()}")

    def fill(self, name, text):
        self.click(name)
        self.wait_for(name, focus=True)
        self.type(text)

    def open_list(self, name, item):
        """Opens the list of a combo box that has this item."""
        self.click(name)
        wait_until(lambda: self.desktop.find_item("QComboBoxListView", item), what=f"{item} in {name}")

    def pick(self, name, item):
        """Chooses an item of a combo box, whose list may be open already."""
        if not self.desktop.find_item("QComboBoxListView", item):
            self.open_list(name, item)
        # Right after it has opened, the list takes no click where the one that opened it was.
        until(lambda: not self.desktop.find_item("QComboBoxListView", item),
              lambda: self.desktop.click_item("QComboBoxListView", item), f"to pick {item}")
        self.wait_for(name, currentText=item)

    def pick_row(self, name, text):
        """Clicks the row of a list or a table, or the tab of a bar, that has this text."""
        self.bring_into_view(name)
        self.wait_for(name, items=lambda items: any(item["text"] == text for item in items))

        def place(widget):
            x, y, width, height = self.desktop.item(widget, text)["rect"]
            return x + width // 2, y + height // 2
        self.desktop.click(lambda: self.widget(name), place)

    def place(self, x, width, height, y=20):
        """Moves and sizes the window that it is."""
        self.desktop.place(lambda: self.find(self.root), x, y, width, height)

    # OBS's own windows, which have no names of their own

    def window(self, title):
        """The widgets of the window whose title begins so, None while there is none."""
        return [w for w in self.desktop.look() if w["window"].startswith(title)] or None

    def press(self, title, text):
        """Clicks a button of another window."""
        def button():
            return next((w for w in self.window(title) or []
                         if "Button" in w["class"] and w.get("text", "").replace("&", "") == text), None)
        self.desktop.click(button)
