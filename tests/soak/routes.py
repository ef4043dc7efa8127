# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The ways on which scores come into OBS, as a user chooses them, and what goes wrong on each."""

import contextlib
import os
import re
import signal
import subprocess
import time
from dataclasses import dataclass, field

from docks import CREW
from obs_session import wait_until
from scenarios import LOST, PORTAL_FAULTS, REJECTED, UNREACHABLE
from setups import OWN

MAIN, POOL = "TF-1001", "TF-1002"
LABELS = {MAIN: "Main gym", POOL: "Pool"}
ADMIN_PORT = 8580

# Seconds that a change may take until it is drawn, without the frames: some are sent, some asked for.
AT_ONCE, POLL = 0.15, 1.3
# Seconds that a status line may take to tell the truth.
SOON, BACK = 6, 30
CALL = 25   # a portal call that hangs, or is cut off in the middle of its first reply, ends after 20

# The setup dialog knows the device by its id alone.
OVER_NETWORK = re.compile(f"Live from ({LABELS[MAIN]}|{MAIN}) over your network")
UNPLUGGED = "The USB device was unplugged or stopped responding."
SIGNED_OUT = "You have been signed out. Sign in again."


@dataclass
class Route:
    name: str
    live: object       # the status line, or a pattern for it
    delay: float
    choose: object     # of a Show: does what a user does, until it is live
    device: str = MAIN
    mishaps: list = field(default_factory=list)


# How it is chosen

def by_dock(device, over_lan):
    def choose(show):
        show.dock.pick("tallyforgeDevice", f"{LABELS[device]} ({device})")
        show.dock.wait_for("tallyforgeUseLan")
        if show.dock.find("tallyforgeUseLan")["checked"] != over_lan:
            show.dock.toggle("tallyforgeUseLan")
    return choose


def by_dialog(carrier):
    def choose(show):
        setup = show.setup
        setup.open()
        setup.choose_carrier(carrier)
        if carrier == "lan":
            setup.type_host(f"127.0.0.1:{ADMIN_PORT}")
        setup.connect()
        pass_password(setup)
        setup.click("tallyforgeUseManaged")
        setup.wait_until_closed()
    return choose


def pass_password(setup, answers=("tallyforgeUseManaged",)):
    """The account knows the password, unless nobody is signed in just now."""
    def page():
        return next((name for name in ("tallyforgeAdminPassword", *answers) if setup.widget(name)), None)
    if wait_until(page, what="the device to answer") == "tallyforgeAdminPassword":
        setup.wait_for("tallyforgeAdminPassword", focus=True)
        setup.sign_in(OWN)


# What goes wrong on every route, and must not show

def crowd(show):
    show.visit_port()


def scenes(show):
    items = show.obs.request("GetSceneItemList", sceneName="Scene")["sceneItems"]
    item = next(item for item in items if item["sourceName"] == show.score.live)
    twin = show.obs.request("DuplicateSceneItem", sceneName="Scene", sceneItemId=item["sceneItemId"])
    for collection in ("Other", "Untitled"):
        show.obs.request("SetCurrentSceneCollection", sceneCollectionName=collection)
    show.obs.request("RemoveSceneItem", sceneName="Scene", sceneItemId=twin["sceneItemId"])


def dock_closed(show):
    show.dock.close()
    show.point()
    show.dock.open()


def dialog_closed(show):
    """Somebody looks at the choice of a device and thinks better of it."""
    show.setup.open()
    show.setup.choose_carrier(show.rng.choice(("usb", "ble", "lan")))
    show.point()
    show.setup.close()


def update_offered(show):
    if show.sim.ready["updates"]:
        show.dock.click("tallyforgeCheckForUpdates")
        show.dock.wait_for("tallyforgeUpdateTitle", text=re.compile("Tallyforge .* is available").match)


ANYWHERE = [crowd, scenes, dock_closed, dialog_closed, update_offered]


# Over the cloud

def portal_fault(fault, status):
    def mishap(show):
        show.sim.fault("portal", **fault)
        show.obs.wait_for_status(status, CALL)
        show.sim.clear("portal")
    mishap.__name__ = "portal " + str(fault.get("status", fault["kind"]))
    return mishap


def portal_hangs(show):
    show.sim.fault("portal", "hang", path=f"/devices/{show.route.device}")
    show.obs.wait_for_status(UNREACHABLE, CALL)
    show.sim.clear("portal")


def portal_slow(show):
    show.sim.fault("portal", "slow", seconds=1, count=5)


def portal_trickles(show):
    """A reply that never comes to its end is worth nothing, but it ends nothing either."""
    state = f"/devices/{show.route.device}/state"
    polls = show.sim.polls(show.route.device)
    show.sim.fault("portal", "trickle", path=state, seconds=1)
    wait_until(lambda: show.sim.polls(show.route.device) > polls, what="a poll")
    show.expect_live()
    show.sim.clear("portal")


def signed_out(show):
    show.sim.revoke_session()
    show.obs.wait_for_status(SIGNED_OUT, SOON)
    email, password = CREW
    show.dock.fill("tallyforgeEmail", email)
    show.dock.fill("tallyforgePassword", password)
    show.dock.key("Return")
    show.dock.wait_for("tallyforgeDevice")
    show.route.choose(show)


def device_fault(kind, text):
    def mishap(show):
        device = show.route.device
        show.sim.fault("device", kind, device=device)
        show.obs.wait_for_status(text.format(device), SOON)
        show.sim.clear("device")
        if kind == "gone":   # it isn't asked for any more
            show.route.choose(show)
    mishap.__name__ = "device " + kind
    return mishap


CLOUD = [*(portal_fault(*row) for row in PORTAL_FAULTS), portal_hangs, portal_slow, portal_trickles, signed_out,
         device_fault("pending", "{} has not sent any scoreboard data yet."),
         device_fault("offline", "{} is offline. Showing its last scores."),
         device_fault("gone", "That device is not on this account.")]


# Over the local network

def feed_away(show):
    """The internet is gone as well, which is no matter here."""
    show.sim.fault("portal", "refuse")
    show.sim.fault("feed", "away", device=show.route.device)
    show.obs.wait_for_status(LOST, SOON)
    show.sim.clear()


def feed_odd(kind):
    def mishap(show):
        show.sim.fault("feed", kind, device=show.route.device)
        for _ in range(3):
            show.sim.step()
        show.point(joined=kind == "join")
        show.expect_live()
        show.sim.clear("feed")
    mishap.__name__ = "feed " + kind
    return mishap


def feed_cut(kind):
    def mishap(show):
        auths = show.sim.device(show.route.device)["feed_auths"]
        show.sim.fault("feed", kind, device=show.route.device)
        wait_until(lambda: show.sim.device(show.route.device)["feed_auths"] > auths, BACK, "a new connection")
        show.sim.clear("feed")
    mishap.__name__ = "feed " + kind
    return mishap


def feed_rejected(show):
    show.sim.fault("feed", "reject", device=show.route.device)
    show.sim.fault("feed", "drop", device=show.route.device)
    show.obs.wait_for_status(REJECTED, SOON)
    show.sim.clear("feed")
    show.route.choose(show)


def device_restarts(show):
    restarts = show.sim.device(show.route.device)["admin"]["restarts"]
    show.sim.admin(show.route.device, restart=True)
    show.expect_not_live(SOON)

    def is_back():
        admin = show.sim.device(show.route.device)["admin"]
        return admin["restarts"] > restarts and not admin["down"]
    wait_until(is_back, what="the device to be back")
    if show.route.name in ("usb", "ble"):
        reconnect(show)


FEED = [feed_away, *map(feed_odd, ("split", "join", "garbage")), *map(feed_cut, ("drop", "reset")),
        feed_rejected, device_restarts]


# On a cable

def reconnect(show):
    show.free_port()
    show.route.choose(show)


def unplugged(show):
    show.sim.fault("usb", "unplug")
    show.obs.wait_for_status(UNPLUGGED, SOON)
    show.sim.clear("usb")
    reconnect(show)


def unplugged_in_dialog(show):
    """While somebody manages the device whose scores are live."""
    show.setup.open()
    show.setup.connect()
    show.setup.wait_for("tallyforgeUseManaged")
    show.setup.show_tab(show.rng.choice(("Status", "Updates", "Cloud")))
    show.sim.fault("usb", "unplug")
    show.setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>")
    show.obs.wait_for_status(UNPLUGGED, SOON)
    show.sim.clear("usb")
    show.setup.close()
    reconnect(show)


def unplugged_on_the_way(show):
    """Once the scores have gone: somewhere between the choice of the port and the device's settings."""
    show.sim.fault("usb", "unplug")
    show.obs.wait_for_status(UNPLUGGED, SOON)
    show.sim.clear("usb")
    show.free_port()
    show.setup.open()
    show.setup.connect()
    time.sleep(show.rng.uniform(0, 1))
    show.sim.fault("usb", "unplug")
    show.setup.wait_for_text("tallyforgeSetupTitle", re.compile("<b>(Connection lost|Could not connect)").match)
    show.setup.close()
    show.sim.clear("usb")
    reconnect(show)


def line_noise(show):
    show.sim.fault("usb", "noise")
    show.point()
    show.expect_live()
    show.sim.clear("usb")


def locked(show):
    """Nobody gets in for a while, with the right password either."""
    show.sim.fault("usb", "unplug")
    show.obs.wait_for_status(UNPLUGGED, SOON)
    show.sim.clear("usb")
    show.free_port()
    show.sim.fault("usb", "error", method="login", code="rate_limited")
    show.setup.open()
    show.setup.connect()
    show.setup.wait_for("tallyforgeAdminPassword", focus=True)
    show.setup.sign_in(OWN)
    show.setup.wait_for("tallyforgeAdminPassword", focus=True)
    show.sim.clear("usb")
    show.setup.sign_in(OWN)
    show.setup.click("tallyforgeUseManaged")
    show.setup.wait_until_closed()


def internet_gone(show):
    """The scores come from the device itself."""
    show.sim.fault("portal", "refuse")
    show.point()
    show.expect_live()
    show.sim.clear("portal")


def firmware_update(show):
    version = show.sim.device(MAIN)["admin"]["firmware"]["version"]
    offered = f"9.{show.count}.0"
    show.sim.admin(MAIN, firmware={"version": version, "offered": offered, "waits": True, "bytes": 200000})
    setup = show.setup
    setup.open()
    setup.connect()
    setup.wait_for("tallyforgeUseManaged")
    setup.show_tab("Updates")
    setup.click("tallyforgeCheckUpdate")
    setup.wait_for_text("tallyforgeMessage", lambda text: "is available." in text)
    setup.ask_then("tallyforgeInstallUpdate", "Install update")
    setup.wait_for_text("tallyforgeFirmwareStatus", lambda text: "Downloading… " in text)
    show.point()
    setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>", 60)
    setup.close()
    wait_until(lambda: show.sim.device(MAIN)["admin"]["firmware"]["version"] == offered, what="the update")
    wait_until(lambda: not show.sim.device(MAIN)["admin"]["down"], what="the device to be back")
    reconnect(show)


CABLE = [unplugged, unplugged_in_dialog, unplugged_on_the_way, line_noise, locked, internet_gone, firmware_update, device_restarts]


# Over Bluetooth

def helper_killed(show):
    helpers = subprocess.run(["pgrep", "-f", "tallyforge-bluetooth-helper"], text=True,
                             stdout=subprocess.PIPE, check=True).stdout.split()
    for helper in helpers:
        with contextlib.suppress(ProcessLookupError):
            os.kill(int(helper), signal.SIGKILL)
    show.obs.wait_for_status("The Bluetooth helper stopped", SOON)
    show.route.choose(show)


def link_lost(show):
    show.sim.call("/ble", {"device": MAIN, "lose": True})
    show.expect_not_live(SOON)
    show.route.choose(show)


def out_of_range(show):
    show.sim.call("/ble", {"device": MAIN, "near": False})
    show.expect_not_live(SOON)
    show.sim.call("/ble", {"device": MAIN, "near": True})
    show.route.choose(show)


AIR = [helper_killed, link_lost, out_of_range, internet_gone, device_restarts]

ROUTES = [
    Route("cloud", f"Live from {MAIN}", POLL, by_dock(MAIN, over_lan=False), MAIN, CLOUD),
    Route("lan", OVER_NETWORK, AT_ONCE, by_dock(MAIN, over_lan=True), MAIN, FEED),
    Route("usb", f"Live from {MAIN}", AT_ONCE, by_dialog("usb"), MAIN, CABLE),
    Route("pool", f"Live from {POOL}", POLL, by_dock(POOL, over_lan=False), POOL, CLOUD),
    Route("ble", f"Live from {MAIN}", POLL, by_dialog("ble"), MAIN, AIR),
    Route("network", f"Live from {MAIN}", POLL, by_dialog("lan"), MAIN, [internet_gone]),
    Route("pool-lan", "Live from Pool over your network", AT_ONCE, by_dock(POOL, over_lan=True), POOL, FEED),
]
