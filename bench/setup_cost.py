# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long the setup dialog holds the main thread of a real OBS, page by page, while scores arrive."""

import time
from functools import partial

import desktop
import obs_cost
from dock import Dock
from dock_cost import changes, held
from figures import Heading, Row, high, median
from obs_session import ObsSession
from setup import SetupWindow

WALKS, HELD_MILLISECONDS, SHOWN_SECONDS, TAB_SECONDS = 20, 16, 0.7, 0.4
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
    """Gives, by step, how long the main thread left a question without an answer, in milliseconds."""
    steps = {
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
            with held(setup) as waits:
                go()
                time.sleep(seconds)
            longest[name] = max(waits)
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
        dock.open()
        with held(dock) as nothing:
            time.sleep(SHOWN_SECONDS)
        with changes(simulator, device_id):
            walks = [walk(SetupWindow(dock), simulator.usb_port.rpartition("/")[2]) for _ in range(WALKS)]
    rows = [Heading("The setup dialog, with ten changes a second: main thread held, at worst in each walk"),
            Row("nothing: what asking costs", "ms", [median(nothing)])]
    for name in walks[0]:
        waits = [each[name] for each in walks]
        rows.append(Row(name, "ms", waits, f"< {HELD_MILLISECONDS} (95 %)", high(waits) < HELD_MILLISECONDS))
    return rows
