# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long the setup dialog holds the main thread of a real OBS, page by page, while scores arrive."""

import os
import time
from functools import partial

import desktop
import obs_cost
from dock import Dock
from dock_cost import changes
from figures import Heading, Row, high, median
from obs_session import ObsSession
from setup import SetupWindow

WALKS = int(os.environ.get("BENCH_WALKS", 20))
HELD_MILLISECONDS, SHOWN_SECONDS, TAB_SECONDS = 16, 0.7, 0.4
NOTHING, NOTHING_SECONDS, FLOOR_FACTOR = "nothing", 4, 1.2
TABS = "Status", "Wi-Fi", "Settings", "Security", "Updates", "Cloud", "Advanced"
NETWORKS, CONTROLLERS = 200, 500
FACTORY = "quietmoose"


def scoreboards():
    return [{"manufacturer": f"maker{n % 10}", "model": f"model {n % 50}", "sport": "hockey",
             "input_type": f"channel_{n}"} for n in range(CONTROLLERS)]


def prepare(simulator, device_id):
    """A device that lets the dialog in and is on no network yet, with long lists."""
    networks = [{"ssid": f"Network {n}", "rssi": -40 - n % 50} for n in range(NETWORKS)]
    simulator.call("/admin", {"device": device_id, "password": FACTORY, "must_change_password": False,
                              "joined": "", "networks": networks, "controllers": scoreboards(),
                              "log_bytes": 1 << 20})
    simulator.call("/pace", {"pace": 50})


def connect(setup, port):
    """To the device on this port, of several."""
    setup.choose_device(next(item["text"] for item in setup.find("tallyforgeDeviceList")["items"]
                             if port in item["text"]))
    setup.connect()


def walk(setup, port):
    """Gives, by step, the longest time that the main thread was held, the most that it worked on end,
    and how old the changes were when they came into view, in milliseconds."""
    steps = {
        NOTHING: lambda: time.sleep(NOTHING_SECONDS),
        "opening it": setup.open,
        f"to the Wi-Fi page with {NETWORKS} networks": partial(connect, setup, port),
        f"to the scoreboards, {CONTROLLERS} of them": lambda: setup.click("tallyforgeSkipWifi"),
        "to the summary": lambda: setup.click("tallyforgeSkipController"),
        "to the settings and tools": lambda: setup.click("tallyforgeMoreSettings"),
    }
    tabs = {f"to the tab {tab} for the first time": partial(setup.show_tab, tab) for tab in TABS[1:]}
    tabs["the device's log"] = lambda: setup.click("tallyforgeShowLog")
    tabs |= {f"to the tab {tab} again": partial(setup.show_tab, tab) for tab in TABS}
    end = {"back to the choice of a device": lambda: setup.click("tallyforgeDisconnect")}
    longest = {}
    for part, seconds in ((steps, SHOWN_SECONDS), (tabs, TAB_SECONDS), (end, SHOWN_SECONDS)):
        for name, go in part.items():
            with setup.desktop.watch_main_thread() as held:
                go()
                time.sleep(seconds)
            longest[name] = max(held["waited"]), max(held["used"]), held["shown"]
    setup.close()
    return longest


def measure(build, folder, simulator, device_id, screen):
    home = obs_cost.fresh_home(folder / "setup", build / "plugins/tallyforge-obs", simulator, device_id)
    home.install(build / "plugins/dock-finder", "dock-finder")
    finder = home.folder / "finder"
    env = screen.env() | desktop.env(build / "plugins/dock-finder", finder)
    dock = Dock(screen, finder)
    prepare(simulator, device_id)
    with ObsSession(home, env) as obs:
        obs.wait_for_status(f"Live from {simulator.devices[device_id]['nickname']} over your network")
        obs.create_input(obs_cost.SCENE, "Sent", "tallyforge_text", {"template": "{clock}"})
        dock.open()
        with changes(simulator, device_id):
            walks = [walk(SetupWindow(dock), simulator.usb_port.rpartition("/")[2]) for _ in range(WALKS)]
    rows = [Heading("The setup dialog, with ten changes a second: main thread held, at worst in each walk")]
    for name in walks[0]:
        held, used, _ = zip(*(each[name] for each in walks))
        rows += [Row(name, "ms", held, f"< {HELD_MILLISECONDS} (95 %)", high(held) < HELD_MILLISECONDS),
                 Row("    processor time in it", "ms", used)]
    floor, shown = [], []
    for each in walks:
        for name, (_, _, ages) in each.items():
            (floor if name == NOTHING else shown).extend(ages)
    latest = FLOOR_FACTOR * max(floor)
    return rows + [Row("A change until it is in a frame, nothing done", "ms", floor),
                   Row("    while the dialog is walked through", "ms", shown, f"< {latest:.1f} (max)", max(shown) < latest)]
