# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The dialog that sets a device up, in a running OBS."""

from obs_session import wait_until
from window import Window

SETUP = "tallyforgeSetupDialog"
OPEN = "tallyforgeSetUpDevice"    # in the dock
ROOM = (40, 560, 700)             # from the left, width, height
CARRIERS = {"usb": "tallyforgeOverUsb", "ble": "tallyforgeOverBluetooth",
            "lan": "tallyforgeOverNetwork"}
PORTS, HOST, CONNECT = "tallyforgeDeviceList", "tallyforgeLanHost", "tallyforgeConnect"
CHOICE = ("tallyforgeMaker", "tallyforgeModel", "tallyforgeSport", "tallyforgeInput")


class SetupWindow(Window):
    """Opened from the dock, of which it takes the screen."""

    def __init__(self, dock):
        super().__init__(dock.desktop, SETUP)
        self._dock = dock

    def open(self, room=ROOM):
        self._dock.click(OPEN)
        wait_until(self.is_open, what="the setup dialog")
        self.place(*room)

    # Page by page

    def choose_carrier(self, carrier):
        """"usb", "ble" or "lan"."""
        self.click(CARRIERS[carrier])
        self.wait_for(CARRIERS[carrier], checked=True)

    def choose_device(self, text):
        """Picks the row of a port or of a device that was found."""
        self.pick_row(PORTS, text)
        self.wait_for(CONNECT, enabled=True)

    def type_host(self, text):
        self.fill(HOST, text)
        self.wait_for(CONNECT, enabled=True)

    def chosen_device(self):
        """The row that is selected, None if none is."""
        items = self.find(PORTS).get("items", [])
        return next((item["text"] for item in items if item["selected"]), None)

    def connect(self):
        self.wait_for(CONNECT, enabled=True)
        self.click(CONNECT)

    def sign_in(self, password):
        self.fill("tallyforgeAdminPassword", password)
        self.key("Return")

    def set_password(self, password, again=None):
        self.fill("tallyforgeNewPassword", password)
        self.fill("tallyforgeRepeatedPassword", password if again is None else again)
        self.key("Return")

    def join(self, network, password):
        """Picks one of the networks that were found, by its name."""
        box = self.wait_for("tallyforgeNetwork",
                            items=lambda items: any(name_of(item) == network for item in items))
        self.click("tallyforgeNetwork")
        self.key("alt+Down")   # a click opens no list where a name can be typed
        self.pick("tallyforgeNetwork",
                  next(item["text"] for item in box["items"] if name_of(item) == network))
        self.fill("tallyforgeWifiPassword", password)
        self.key("Return")

    def choose_scoreboard(self, *labels):
        """The manufacturer, the model, the sport and the input type, by what the boxes show."""
        self.wait_for("tallyforgeSaveController", enabled=True)
        for name, label in zip(CHOICE, labels):
            if self.find(name)["currentText"] != label:
                self.pick(name, label)
        self.click("tallyforgeSaveController")

    def claim(self, code):
        self.fill("tallyforgeClaimCode", code)
        self.click("tallyforgeClaim")

    def make_key(self):
        """Lets a wireless receiver make a new key."""
        self.click("tallyforgeNewKey")

    def use_key(self, key):
        self.fill("tallyforgePairingKey", key)
        self.click("tallyforgeUseKey")

    def show_tab(self, title):
        self.desktop.click_item("QTabBar", title)

    def show_tab_at(self, index):
        """In whatever language the tabs are."""
        self.show_tab(self.tabs()[index])

    def tabs(self):
        return next([item["text"] for item in widget["items"]] for widget in self.look()
                    if widget["class"] == "QTabBar")

    def answer(self, title, button):
        """Answers the question whose title begins so."""
        wait_until(lambda: self.window(title), what=f"the question {title}")
        self.press(title, button)
        wait_until(lambda: not self.window(title), what=f"the question {title} to go")

    def ask_then(self, name, title, button="Yes"):
        """Clicks a button that asks something first, and answers."""
        self.wait_for(name, enabled=True)
        self.click(name)
        self.answer(title, button)

    def close(self):
        self.key("Escape")
        self.wait_until_closed()


def name_of(item):
    """The network's name in an entry of the box, without its strength."""
    return item["text"].rpartition("   (")[0]
