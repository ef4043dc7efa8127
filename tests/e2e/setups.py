# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the setup dialog in a real OBS, used with the mouse and the keyboard alone."""

import time

from docks import opened, status
from scenarios import CLOUD
from setup import SetupWindow
from stage import Score, check
from window import has

DEVICE = "TF-1001"
FACTORY, OWN = "quietmoose", "courtside 2026"
TOO_WEAK = "Use at least 8 characters, and not the factory password."
DIFFERENT = "The two passwords do not match."
NOT_YOURS = "That device is not on this account."
NEW_DEVICE = ("--usb", DEVICE, "--admin-password", f"{DEVICE}={FACTORY}")


def setup_first(stage):
    """From a new device on a cable to scores in the picture, with each mistake made once."""
    with stage.venue(options=NEW_DEVICE) as sim:
        sim.fault("device", "gone")   # from the account, to which it is still to be added
        with opened(stage, stage.home()) as (obs, dock):
            score = Score(obs)
            begin = time.monotonic()
            setup = SetupWindow(dock)
            setup.open()
            check(sim.usb_port.rpartition("/")[2] in setup.chosen_device(), "the only port is chosen")
            setup.connect()
            choose_password(setup)
            join(setup)
            setup.choose_scoreboard("NEVCO", "MPC-5", "Hockey", "NEVCO serial")
            setup.wait_for_text("tallyforgeSummary", f"Device: {DEVICE}\nFirmware: 2.4.0\n"
                                "Wi-Fi: connected (127.0.0.1)")
            claim(setup, sim)
            setup.click("tallyforgeUseDevice")
            setup.wait_until_closed()
            obs.wait_for_status(f"Live from {DEVICE}")
            score.follows(sim, home_score=7, away_score=3)
            print(f"From the dock to live scores: {dock.desktop.clicks} clicks and "
                  f"{dock.desktop.texts} texts in {time.monotonic() - begin:.0f} s")
            check_kept(sim)
            use_network(dock, sim, score)


def choose_password(setup):
    setup.wait_for("tallyforgeNewPassword", focus=True)
    for new, again, answer in (("quietmo", "quietmo", TOO_WEAK),
                               (FACTORY.upper(), FACTORY.upper(), TOO_WEAK),
                               (OWN, OWN + "x", DIFFERENT)):
        setup.set_password(new, again)
        setup.wait_for_text("tallyforgeSetupMessage", answer)
    setup.set_password(OWN)


def join(setup):
    setup.wait_for_text("tallyforgeMessage", "5 network(s) found.")
    setup.join("Venue", "courtside-7")
    setup.wait_for_text("tallyforgeMessage", has("Checking that the device can join Venue"))
    setup.wait_for_text("tallyforgeMessage", "Joined Venue (127.0.0.1).")


def claim(setup, sim):
    right = sim.call("/secrets")["devices"][DEVICE]["claim_code"]
    setup.claim("NOT-IT")
    setup.wait_for_text("tallyforgeSummary", NOT_YOURS)
    setup.claim(f" {right} ")
    setup.wait_for_text("tallyforgeSummary", "Added to your account.")
    setup.wait_until_gone("tallyforgeClaimCode")
    links = sim.state()["portal"]["links"]
    check(links == [{"device": DEVICE, "via": "usb", "with_code": True}], f"added as {links}")


def check_kept(sim):
    """What the device has been told."""
    admin = sim.device(DEVICE)["admin"]
    check(not admin["must_change_password"], "the factory password is gone")
    check(admin["controller"] == {"manufacturer": "nevco", "model": "MPC-5", "sport": "hockey",
                                  "input_type": "nevco"}, f"it reads {admin['controller']}")
    check(admin["wifi"]["wifi_sta_ssid"] == "Venue", "it is on the network")


def use_network(dock, sim, score):
    """The setup has left what the local network needs; the dock offers it."""
    dock.pick("tallyforgeDevice", f"Main gym ({DEVICE})")
    dock.wait_for_text("tallyforgeStatus", status(CLOUD))
    dock.toggle("tallyforgeUseLan")
    dock.wait_for_text("tallyforgeStatus", status(f"Live from {DEVICE} over your network"))
    score.follows(sim, home_score=9)
