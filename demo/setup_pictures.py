# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Pictures of the dialog that sets a device up, page by page."""

import subprocess

import docks
import setups
from setup import SETUP, SetupWindow
from window import has

DEVICE, OTHER = "TF-1001", "TF-1002"
VENUE = (f"{DEVICE}=Main gym", f"{OTHER}=Pool")
OPTIONS = (*setups.NEW_DEVICE, "--receiver", OTHER, "--pace", "5")
SCORES = {"home_score": 58, "away_score": 61, "period": 4, "clock": "2:07"}


class Camera:
    def __init__(self, screen, setup, folder):
        self._screen, self._setup, self._folder = screen, setup, folder
        self._count = 0

    def take(self, state):
        self._count += 1
        path = self._folder / f"setup-{self._count:02}-{state}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        x, y, width, height = self._setup.find(SETUP)["rect"]
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
    setup.show_tab("Wi-Fi")
    setup.wait_for_text("tallyforgeMessage", has("found"))
    camera.take("wifi-tab")


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
            setup.open((40 * look.scale, 500 * look.scale, 600 * look.scale))
            camera = Camera(stage.screen, setup, folder)
            for part in (new_device, manager, lost, receiver):
                part(sim, setup, camera)
            setup.close()
