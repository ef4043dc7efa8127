# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How soon a change at the device reaches a client of obs-websocket, beside an event of its own."""

import contextlib
import json
import queue
import threading
import time

from websockets.sync.client import connect

import obs_cost
from figures import Heading, Row, median
from obs_session import ObsSession

URL = "ws://127.0.0.1:4455"
HELLO, IDENTIFY, IDENTIFIED, EVENT = 0, 1, 2, 5
GENERAL, VENDORS = 1 << 0, 1 << 9   # of eventSubscriptions
COUNT = 200
PAUSE_SECONDS = 0.02   # so that each begins in a process at rest
PATIENCE = 10
TIMES_ITS_OWN = 1.5


@contextlib.contextmanager
def follower():
    """The events as they arrive: the moment of the monotonic clock, the type and the data."""
    events = queue.SimpleQueue()
    with connect(URL) as obs:
        while (message := json.loads(obs.recv(PATIENCE)))["op"] != IDENTIFIED:
            if message["op"] == HELLO:
                wish = {"rpcVersion": 1, "eventSubscriptions": GENERAL | VENDORS}
                obs.send(json.dumps({"op": IDENTIFY, "d": wish}))

        def read():
            for text in obs:
                moment = time.monotonic_ns()
                message = json.loads(text)
                if message["op"] == EVENT:
                    events.put((moment, message["d"]["eventType"], message["d"]["eventData"]))
        reader = threading.Thread(target=read, daemon=True)
        reader.start()
        yield events
    reader.join()


def arrival(events, wanted):
    """When the first event that fits arrived, and what it brought."""
    while True:
        moment, kind, data = events.get(timeout=PATIENCE)
        if wanted(kind, data):
            return moment, data


def own_event(obs, events, data, number):
    begin = time.monotonic_ns()
    obs.request("BroadcastCustomEvent", eventData=data | {"number": number})
    end, _ = arrival(events, lambda kind, data: kind == "CustomEvent" and data["number"] == number)
    return (end - begin) / 1000


def change(simulator, device, events, number):
    """Gives the microseconds too, and the data that a client got."""
    revision = simulator.set(device, {"home_score": number})["revision"]
    end, event = arrival(events, lambda kind, data: kind == "VendorEvent" and data["eventType"] == "data"
                         and data["eventData"]["fields"].get("home_score") == str(number))
    return (end - simulator.call(f"/sent?revision={revision}")["feed_ns"]) / 1000, event["eventData"]


def measure(plugin, folder, simulator, device, env):
    home = obs_cost.fresh_home(folder / "websocket", plugin, simulator, device)
    ours, own = [], []
    with ObsSession(home, env) as obs, follower() as events:
        obs.wait_for_status(f"Live from {simulator.devices[device]['nickname']} over your network")
        for number in range(1, COUNT + 1):   # side by side, because the machine has moods
            time.sleep(PAUSE_SECONDS)
            took, data = change(simulator, device, events, number)
            ours.append(took)
            time.sleep(PAUSE_SECONDS)
            own.append(own_event(obs, events, data, number))
    aim = TIMES_ITS_OWN * median(own)
    return [
        Heading("A program that follows through obs-websocket"),
        Row("obs-websocket: an event of its own with the same data", "us", own),
        Row("A change at the device, over the local network", "us", ours, f"< {aim:.0f}", median(ours) < aim),
    ]
