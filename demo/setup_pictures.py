# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Pictures of the dialogs about devices, page by page."""

import subprocess

import docks
import setups
from obs_session import wait_until
from setup import SETUP, SetupWindow
from window import Window, has

MANAGE = "tallyforgeManageDialog"
DEVICE, OTHER = "TF-1001", "TF-1002"
VENUE = (f"{DEVICE}=Main gym", f"{OTHER}=Pool")
OPTIONS = (*setups.NEW_DEVICE, "--receiver", OTHER, "--pace", "5")
ROOM = 40, 500, 600   # from the left, width, height
TABS = {"status-tab": "tallyforgeDeviceScoreboard", "wifi-tab": "tallyforgeMessage",
        "settings": "tallyforgeSaveSettings", "security": "tallyforgeNewToken",
        "updates": "tallyforgeChipVersion", "cloud": "tallyforgeDeviceId",
        "advanced": "tallyforgeFactoryReset"}
SCORES = {"home_score": 58, "away_score": 61, "period": 4, "clock": "2:07"}


class Camera:
    def __init__(self, screen, window, folder, root=SETUP):
        self._screen, self._window, self._folder, self._root = screen, window, folder, root
        self._count = 0

    def take(self, state):
        self._count += 1
        path = self._folder / f"dialog-{self._count:02}-{state}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        x, y, width, height = self._window.find(self._root)["rect"]
        self._screen.screenshot(path)
        subprocess.run(["convert", path, "-crop", f"{width}x{height}+{x}+{y}", "+repage", path],
                       check=True)


def new_device(sim, setup, camera):
    """From the cable to "All set"."""
    setup.wait_for_text("tallyforgeConnectStatus", has("USB port"))
    setup.choose_carrier("lan")
    camera.take("network")
    setup.choose_carrier("usb")
    setup.choose_device(next(item["text"] for item in setup.find("tallyforgeDeviceList")["items"]
                             if sim.usb_port.rpartition("/")[2] in item["text"]))
    camera.take("cable")
    setup.connect()
    setup.wait_for("tallyforgeNewPassword", focus=True)
    setup.set_password(setups.OWN, setups.OWN + "x")
    setup.wait_for_text("tallyforgeSetupMessage", setups.DIFFERENT)
    camera.take("new-password")
    setup.set_password(setups.OWN)
    setup.wait_for_text("tallyforgeMessage", "5 network(s) found.")
    camera.take("wifi")
    setup.join("Venue", "courtside-7")
    setup.wait_for("tallyforgeSaveController", enabled=True)
    camera.take("scoreboard")
    setup.choose_scoreboard("NEVCO", "MPC-5", "Hockey", "NEVCO serial")
    setup.wait_for_text("tallyforgeSummary", has("Device:"))
    camera.take("all-set")


def manager(sim, setup, camera):
    setup.click("tallyforgeMoreSettings")
    setup.wait_for("tallyforgeDeviceScoreboard")
    sim.set(DEVICE, SCORES)
    setup.wait_for("tallyforgeDeviceScoreboard", plainText=has("home_score: 58"))
    camera.take("status")
    setup.click("tallyforgeRunNetworkTest")
    setup.wait_for("tallyforgeRunNetworkTest", enabled=True)
    camera.take("network-test")
    sim.call("/usb/pipe", {"device": DEVICE, "send": 4096})
    tabs(setup, camera)
    setup.show_tab("Security")
    setup.click("tallyforgeShowPasskey")
    setup.ask_then("tallyforgeNewToken", "New access token")
    setup.wait_for_text("tallyforgeMessage", has("Copy the token now"))
    camera.take("new-token")
    setup.show_tab("Updates")
    setup.click("tallyforgeCheckUpdate")
    setup.wait_for_text("tallyforgeMessage", has("is available"))
    setup.ask_then("tallyforgeInstallUpdate", "Install update")
    setup.wait_for_text("tallyforgeFirmwareStatus",
                        lambda text: "Downloading" in text and not text.endswith(" 0%"))
    camera.take("installing")


def tabs(setup, camera):
    """Each tab, in any language."""
    for index, (name, loaded) in enumerate(TABS.items()):
        setup.show_tab_at(index)
        setup.wait_for(loaded)
        if name == "settings":
            setup.wait_until_gone("tallyforgeMessage")
        camera.take(name)


def lost(sim, setup, camera):
    sim.call("/usb/replug", {"device": DEVICE, "seconds": 1})
    setup.wait_for_text("tallyforgeSetupTitle", has("Connection lost"))
    camera.take("lost")
    setup.click("tallyforgeCancel")


def receiver(sim, setup, camera):
    port = sim.ready["usb"][1]["path"].rpartition("/")[2]
    setup.wait_for("tallyforgeScan", enabled=True)
    setup.click("tallyforgeScan")
    setup.choose_device(next(item["text"] for item in setup.find("tallyforgeDeviceList")["items"]
                             if port in item["text"]))
    setup.connect()
    setup.wait_for_text("tallyforgeReceiverStatus", has("Paired"))
    camera.take("receiver")


def take_setup(stage, look, folder):
    """Every page of the dialog in one look, by a user who is signed in."""
    with stage.venue(*VENUE, options=OPTIONS) as sim:
        sim.fault("device", "gone", device=DEVICE)   # from the account: it can be added
        home = stage.home()
        home.choose_theme("com.obsproject." + look.theme)
        with docks.opened(stage, home, options=look.options) as (_, dock):
            setup = SetupWindow(dock)
            setup.open([pixels * look.scale for pixels in ROOM])
            camera = Camera(stage.screen, setup, folder)
            for part in (new_device, manager, lost, receiver):
                part(sim, setup, camera)
            setup.close()


def take_account(stage, look, folder):
    """The dialog about a device of the account."""
    with stage.venue(DEVICE + "=Main gym") as sim:
        home = stage.home()
        home.choose_theme("com.obsproject." + look.theme)
        with docks.opened(stage, home, options=look.options) as (_, dock):
            dock.click("tallyforgeManageDevice")
            dialog = Window(dock.desktop, MANAGE)
            wait_until(dialog.is_open, what="the dialog about the device")
            dialog.place(*(pixels * look.scale for pixels in (40, 440, 520)))
            dialog.click("tallyforgeCheckStatus")
            dialog.wait_for_text("tallyforgeManageMessage", "Status received.")
            Camera(stage.screen, dialog, folder, MANAGE).take("account")


def take_pages(stage, look, folder):
    """The dialog's pages in another language: nothing here knows what they say."""
    with stage.venue(*VENUE, options=OPTIONS) as sim:
        home = stage.home(language=look.language)
        home.choose_theme("com.obsproject." + look.theme)
        with docks.opened(stage, home, options=look.options) as (_, dock):
            setup = SetupWindow(dock)
            setup.open(ROOM)
            camera = Camera(stage.screen, setup, folder)
            setup.choose_device(next(item["text"] for item in setup.find("tallyforgeDeviceList")["items"]
                                     if sim.usb_port.rpartition("/")[2] in item["text"]))
            camera.take("cable")
            setup.connect()
            setup.wait_for("tallyforgeNewPassword", focus=True)
            camera.take("new-password")
            setup.set_password(setups.OWN)
            setup.wait_for("tallyforgeScanNetworks", enabled=True)
            for page, way_on in (("wifi", "tallyforgeSkipWifi"), ("scoreboard", "tallyforgeSkipController"),
                                 ("all-set", "tallyforgeMoreSettings")):
                setup.wait_for(way_on)
                camera.take(page)
                setup.click(way_on)
            tabs(setup, camera)
            setup.close()
