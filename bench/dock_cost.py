# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What the dock costs a real OBS: at its start, when it is opened, and while it is open."""

import contextlib
import threading
import time

import desktop
import obs_cost
from dock import DOCK, Dock
from figures import Heading, Row, median
from obs_home import MODULE
from obs_session import ObsSession

PAIRS, SECONDS, SETTLE_SECONDS = 4, 10, 2
CHANGES_PER_SECOND = 10
CPU_PERCENT = 1
STARTS, SHOWN_SECONDS, HELD_MILLISECONDS = 5, 1, 50


@contextlib.contextmanager
def changes(simulator, device):
    """Meanwhile the score changes ten times a second; the clock shows when that was sent."""
    over = threading.Event()

    def flow():
        due, count = time.monotonic(), 0
        while not over.wait(max(0, due - time.monotonic())):
            count += 1
            simulator.set(device, {"home_score": count % 100, "clock": str(time.monotonic_ns())})
            due += 1 / CHANGES_PER_SECOND
    thread = threading.Thread(target=flow)
    thread.start()
    try:
        yield
    finally:
        over.set()
        thread.join()


def starts(home, simulator, device_id, env, use):
    """Starts OBS some times; gives what each module took to load, and what use() returned."""
    loads, results = [], []
    for _ in range(STARTS):
        with ObsSession(home, env) as obs:
            obs.wait_for_status(f"Live from {simulator.devices[device_id]['nickname']} over your network")
            time.sleep(SETTLE_SECONDS)
            results.append(use())
        loads.append(obs_cost.load_times(obs.log()))
    return loads, results


def open_and_close(dock):
    """How long the main thread is held by opening the dock for the first time and for the second."""
    longest = []
    for _ in range(2):
        with dock.desktop.watch_main_thread() as held:
            dock.choose("Docks", "Tallyforge")
            time.sleep(SHOWN_SECONDS)
        longest.append(max(held["waited"]))
        dock.close()
    return longest


def measure_starts(home, simulator, device_id, env, dock):
    closed, shown = starts(home, simulator, device_id, env, lambda: open_and_close(dock))
    with ObsSession(home, env):
        dock.open()   # and OBS remembers that
        time.sleep(SHOWN_SECONDS)
    left_open, _ = starts(home, simulator, device_id, env, lambda: dock.wait_for("tallyforgeScore"))
    first, again = zip(*shown)
    rows = [Heading("What the dock costs OBS's start, and opening it")]
    for state, loads in (("closed", closed), ("left open", left_open)):
        ours, websocket = ([load[name] for load in loads] for name in (MODULE, "obs-websocket"))
        rows += [
            Row(f"Start with the dock {state}: loading obs-websocket", "ms", websocket),
            Row("    loading the plug-in, from the same logs", "ms", ours, "<= obs-websocket",
                median(ours) <= median(websocket))]
    return rows + [
        Row("The dock shown for the first time: main thread held", "ms", first,
            f"< {HELD_MILLISECONDS}", max(first) < HELD_MILLISECONDS),
        Row("    and for the second time", "ms", again)]


def main_thread_share(obs):
    """Percent of a core that OBS's main thread takes, which does all of the dock's work."""
    pid = obs.process.pid

    def used():
        return next(seconds for (number, _), seconds in obs_cost.thread_seconds(pid).items()
                    if number == pid)
    before, begin = used(), time.monotonic()
    time.sleep(SECONDS)
    return (used() - before) * 100 / (time.monotonic() - begin)


def measure(build, folder, simulator, device_id, screen):
    home = obs_cost.fresh_home(folder / "dock", build / "plugins/tallyforge-obs", simulator, device_id)
    home.install(build / "plugins/dock-finder", "dock-finder")
    finder = home.folder / "finder"
    env = screen.env() | desktop.env(build / "plugins/dock-finder", finder)
    dock = Dock(screen, finder)
    at_start = measure_starts(home, simulator, device_id, env, dock)
    closed, opened = [], []
    with ObsSession(home, env) as obs:
        obs.wait_for_status(f"Live from {simulator.devices[device_id]['nickname']} over your network")
        with changes(simulator, device_id):
            for _ in range(PAIRS):   # side by side, because the machine has moods
                dock.open()
                time.sleep(SETTLE_SECONDS)
                opened.append(main_thread_share(obs))
                dock.close()
                time.sleep(SETTLE_SECONDS)
                closed.append(main_thread_share(obs))
        dock.open()
        with changes(simulator, device_id):
            at_changes = drawn(dock)
        at_rest = drawn(dock)
    return at_start + rows(closed, opened, at_changes / (SECONDS * CHANGES_PER_SECOND), at_rest)


def drawn(dock):
    """How often widgets of the dock are drawn in a while."""
    def so_far():
        dock.wait_for("tallyforgeScore")
        return sum(widget["paints"] for widget in dock.look(DOCK))
    time.sleep(SETTLE_SECONDS)
    before = so_far()
    time.sleep(SECONDS)
    return so_far() - before


def rows(closed, opened, for_a_change, at_rest):
    added = [one - other for one, other in zip(opened, closed)]
    return [
        Heading(f"What the open dock costs OBS's main thread, with {CHANGES_PER_SECOND} changes a second"),
        Row("OBS with the dock closed", "% core", closed),
        Row("What the open dock adds", "% core", added, f"< {CPU_PERCENT}", median(added) < CPU_PERCENT),
        Row("Widgets drawn for a change, backgrounds included", "", [for_a_change]),
        Row(f"Widgets drawn in {SECONDS} s without a change", "", [at_rest], "none", at_rest == 0),
    ]
