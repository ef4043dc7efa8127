# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the setup dialog in a real OBS, used with the mouse and the keyboard alone."""

import contextlib
import time

from docks import YELLOW, opened, signed_out, status
from obs_session import wait_until
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


KNOWN = ("--usb", DEVICE, "--admin-password", f"{DEVICE}={OWN}", "--pace", "10")
LIVE = status(f"Live from {DEVICE}")
STOPPED = status(f"Disconnected from {DEVICE}. Its scores have stopped.", YELLOW)
LAN_HOST, REHEARSAL = "127.0.0.1:8081", "rehearsal"


@contextlib.contextmanager
def cable(stage):
    """A device on a cable whose password has been changed, but that is on no network yet."""
    with stage.venue(options=KNOWN) as sim:
        sim.admin(DEVICE, joined="")
        yield sim


def walk(setup, password=OWN):
    """From the dock through all pages, one at a time, without a change to the device."""
    setup.open()
    setup.wait_for("tallyforgeConnect", enabled=True)
    yield "connect"
    setup.connect()
    setup.wait_for("tallyforgeAdminPassword", focus=True)
    yield "password"
    setup.sign_in(password)
    setup.wait_for_text("tallyforgeMessage", "5 network(s) found.")
    yield "wifi"
    yield from walk_on(setup)


def walk_on(setup):
    setup.click("tallyforgeSkipWifi")
    setup.wait_for("tallyforgeSaveController", enabled=True)
    yield "controller"
    setup.click("tallyforgeSkipController")
    setup.wait_for("tallyforgeSummary")
    yield "done"
    setup.click("tallyforgeMoreSettings")
    setup.wait_for("tallyforgeRefreshStatus")
    yield "manager"


def setup_live(stage):
    """A device is managed while its scores are in the picture, and none of them is lost."""
    with cable(stage) as sim, opened(stage, signed_out(stage)) as (obs, dock):
        score = Score(obs)
        setup = SetupWindow(dock)
        list(walk(setup))
        setup.click("tallyforgeUseManaged")
        setup.wait_until_closed()
        dock.wait_for_text("tallyforgeStatus", LIVE)
        score.follows(sim, home_score=1)
        before = sim.device(DEVICE)

        setup.open()
        setup.connect()
        setup.wait_for_text("tallyforgeMessage", "5 network(s) found.")
        for points, page in enumerate(walk_on(setup), 2):
            score.follows(sim, home_score=points)
            dock.wait_for_text("tallyforgeStatus", LIVE)
        setup.click("tallyforgeRunNetworkTest")
        score.follows(sim, home_score=20)
        setup.close()
        score.follows(sim, home_score=21)
        after = sim.device(DEVICE)
        check(after["usb"]["opens"] == before["usb"]["opens"], "the port was opened once")
        check(after["admin"]["logins"] == before["admin"]["logins"], "it signed in once")

        setup.open()
        setup.connect()
        setup.wait_for("tallyforgeSkipWifi")
        list(walk_on(setup))
        setup.click("tallyforgeDisconnect")
        dock.wait_for_text("tallyforgeStatus", STOPPED)
        setup.wait_for("tallyforgeConnect", enabled=True)   # the port is free again


def setup_network(stage):
    """Over the local network, as in a rehearsal: a host that is typed, and one that is known by the
    device's number."""
    with stage.venue(options=("--rehearse", "--pace", "10")) as sim:
        home = signed_out(stage, settings={"lan": {DEVICE: sim.lan_entry(DEVICE) | {"host": LAN_HOST}}})
        with opened(stage, home) as (obs, dock):
            score = Score(obs)
            setup = SetupWindow(dock)
            setup.open()
            setup.choose_carrier("lan")
            setup.type_host(f"http://{LAN_HOST}/")
            setup.key("Return")
            setup.wait_for("tallyforgeAdminPassword", focus=True)
            setup.sign_in("wrong")
            setup.wait_for("tallyforgeAdminPassword", focus=True)
            setup.sign_in(REHEARSAL)
            setup.click("tallyforgeUseManaged")
            setup.wait_until_closed()
            score.follows(sim, home_score=3)
            logins = sim.device(DEVICE)["admin"]["logins"]

            setup.open()
            setup.choose_carrier("lan")
            setup.type_host(DEVICE.lower())
            setup.connect()
            setup.wait_for("tallyforgeRefreshStatus")
            check(sim.device(DEVICE)["admin"]["logins"] == logins, "it signed in once")
            score.follows(sim, home_score=4)
            setup.click("tallyforgeDisconnect")
            dock.wait_for_text("tallyforgeStatus", STOPPED)


def setup_receiver(stage):
    """A wireless receiver: its report, the device behind it, live and used again, and a new key."""
    with stage.venue(options=("--receiver", *KNOWN[1:])) as sim, \
            opened(stage, signed_out(stage)) as (obs, dock):
        score = Score(obs)
        setup = SetupWindow(dock)
        setup.open()
        setup.connect()
        setup.wait_for_text("tallyforgeReceiverStatus",
                            has("Paired with a device.\nReceiving from the device now.\nSignal: "))
        setup.click("tallyforgeManagePaired")
        setup.wait_for("tallyforgeAdminPassword", focus=True)
        setup.sign_in(OWN)
        setup.click("tallyforgeSkipWifi")
        setup.click("tallyforgeSkipController")
        setup.click("tallyforgeUseDevice")
        setup.wait_until_closed()
        dock.wait_for_text("tallyforgeStatus", LIVE)
        score.follows(sim, home_score=1)

        setup.open()
        setup.connect()
        setup.wait_for("tallyforgeSkipWifi")
        score.follows(sim, home_score=2)
        list(walk_on(setup))
        score.follows(sim, home_score=3)
        setup.click("tallyforgeDisconnect")
        dock.wait_for_text("tallyforgeStatus", STOPPED)
        setup.connect()
        setup.use_key("too short")
        setup.wait_for("tallyforgePairingRefusal")
        sim.call("/usb/receiver", {"restarts": False})   # it would be back before it is looked at
        setup.make_key()
        setup.wait_for_text("tallyforgePairingKey", lambda key: len(key) == 32)
        sim.fault("usb", "unplug")
        setup.wait_for_text("tallyforgeSetupMessage", has("New pairing key (write this down"))
        setup.close()


def setup_bluetooth(stage):
    """Over Bluetooth, with the plug-in's own helper; the device is found again while it is live."""
    with stage.venue(options=("--ble", *KNOWN[1:])) as sim, \
            opened(stage, signed_out(stage)) as (obs, dock):
        score = Score(obs)
        setup = SetupWindow(dock)
        setup.open()
        setup.choose_carrier("ble")
        setup.connect()
        setup.wait_for("tallyforgeAdminPassword", focus=True)
        setup.sign_in(OWN)
        setup.click("tallyforgeUseManaged")
        setup.wait_until_closed()
        score.follows(sim, home_score=5)
        logins = sim.device(DEVICE)["admin"]["logins"]

        setup.open()
        setup.choose_carrier("ble")
        setup.connect()
        setup.wait_for("tallyforgeRefreshStatus")
        score.follows(sim, home_score=6)
        setup.close()
        score.follows(sim, home_score=7)
        check(sim.device(DEVICE)["admin"]["logins"] == logins, "it signed in once")


def plugged_in(sim):
    """Waits until the port is there, and the simulator has heard that OBS has let go of it."""
    def is_so():
        usb = sim.device(DEVICE)["usb"]
        return usb["plugged"] and not usb["open"]
    wait_until(is_so, what="the port to be free")


def setup_unplugged(stage):
    """The cable is pulled on each page, and the dialog is closed while it waits."""
    with cable(stage) as sim, opened(stage, signed_out(stage)) as (_, dock):
        setup = SetupWindow(dock)
        for stop in ("password", "wifi", "controller", "done", "manager"):
            next(page for page in walk(setup) if page == stop)
            sim.fault("usb", "unplug")
            setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>")
            check(setup.focus() == "tallyforgeCancel", f"Cancel has the focus, on page {stop}")
            setup.key("Return")
            sim.clear("usb")
            setup.wait_for("tallyforgeScan")
            setup.close()
            plugged_in(sim)
        for fault in ({"kind": "hello-silent"}, {"kind": "silent", "method": "login"}):
            sim.fault("usb", **fault)
            setup.open()
            setup.connect()
            setup.wait_for("tallyforgeSetupBusy")
            setup.close()
            sim.clear("usb")
            if dock.widget("tallyforgeStopRelays"):   # the device still has its way to the cloud
                dock.click("tallyforgeStopRelays")
            plugged_in(sim)
        next(page for page in walk(setup) if page == "wifi")   # it is as good as new


def setup_closing(stage):
    """OBS is closed on each page."""
    with cable(stage):
        for stop in ("connect", "password", "wifi", "controller", "done", "manager"):
            with opened(stage, signed_out(stage)) as (_, dock):
                next(page for page in walk(SetupWindow(dock)) if page == stop)
