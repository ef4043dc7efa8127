# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long data take to the picture: OBS's own text, all routes, and a text file."""

import json
import os
import queue
import random
import subprocess
import threading
import time
import urllib.request
from concurrent.futures import ThreadPoolExecutor

from figures import Heading, Row, high, median
from obs_home import ObsHome
from simulator import CONTROL

PLAIN, OURS, FILE = range(3)    # the bands of the host's picture
FRAME = 1 / 60
FAST_CHANGES, SLOW_CHANGES = 100, 60
PATIENCE_SECONDS = 10
FLOOR_FACTOR, FILE_FACTOR = 1.2, 50
USB_MORE_MILLISECONDS = 10    # half a poll of the serial port, and change


class NotMeasured(Exception):
    """A series could not be measured."""


class Host:
    """The process that hosts libobs. Use as a context."""

    def __init__(self, program, config, device_id, text_file, env):
        self._command = [str(program), str(config), device_id, str(text_file)]
        self._env = os.environ | env
        self._frames = [queue.Queue() for _ in range(3)]
        self._updates = queue.Queue()
        self._statuses = queue.Queue()

    def __enter__(self):
        self._process = subprocess.Popen(self._command, env=self._env, text=True, bufsize=1,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         stderr=subprocess.PIPE)
        self._log = []
        for work in (self._read, lambda: self._log.extend(self._process.stderr)):
            threading.Thread(target=work, daemon=True).start()
        return self

    def __exit__(self, kind, *_):
        self._process.stdin.close()
        try:
            code = self._process.wait(timeout=20)
        except subprocess.TimeoutExpired:
            self._process.kill()
            code = self._process.wait()
        if code and not kind:
            raise NotMeasured(f"The host of libobs ended with code {code}: {self._log[-1:]}")

    def _read(self):
        for line in self._process.stdout:
            message = json.loads(line)
            if "band" in message:
                self._frames[message["band"]].put(message["at"])
            elif "updated" in message:
                self._updates.put(message["updated"])
            else:
                self._statuses.put(message)

    def _take(self, messages, what):
        try:
            return messages.get(timeout=PATIENCE_SECONDS)
        except queue.Empty:
            raise NotMeasured(f"Waited {PATIENCE_SECONDS} s in vain for {what}: "
                              f"{''.join(self._log[-3:])}") from None

    def order(self, line):
        self._process.stdin.write(line + "\n")

    def updated(self):
        return self._take(self._updates, "an update")

    def follow(self, route):
        while not self._statuses.empty():
            self._statuses.get()
        self.order(route)
        self.wait_until_live()

    def wait_until_live(self):
        """Waits for live data, and then until the picture stands still."""
        while not self._take(self._statuses, "live data")["live"]:
            pass
        time.sleep(0.5)
        for band in (PLAIN, OURS):
            self.forget(band)

    def forget(self, band):
        while not self._frames[band].empty():
            self._frames[band].get()

    def picture_after(self, band, change):
        """Makes a change, and returns what it returned and when a frame first showed it."""
        if not self._frames[band].empty():
            raise NotMeasured("The picture changed without a cause.")
        begin = change()
        return begin, self._take(self._frames[band], "a frame with the change")


def scores(number):
    """Every text is as long as the others and differs from the one before."""
    return {"home_score": 100 + number, "away_score": 900 - number}


def score_text(number):
    return "{home_score} - {away_score}".format_map(scores(number))


def milliseconds(begin, end):
    if begin is None or end is None or end < begin:
        raise NotMeasured("A change was seen before it was made.")
    return (end - begin) / 1e6


def portal_moment(revision):
    """When the reply with a revision left."""
    with urllib.request.urlopen(f"{CONTROL}/sent?revision={revision}", timeout=10) as answer:
        return json.load(answer)["portal_ns"]


class Latency:
    def __init__(self, host, simulator, device_id, text_file):
        self._host = host
        self._simulator = simulator
        self._device_id = device_id
        self._text_file = text_file

    def floor_and(self, carrier):
        """OBS's own text and ours by turns, so that both see the same machine."""
        wait = random.Random(1)
        floor, ours = [], []
        for number in range(1, FAST_CHANGES + 1):
            for band, change, series in ((PLAIN, self._change_plain, floor),
                                         (OURS, self._change_board, ours)):
                time.sleep(0.05 + wait.uniform(0, 3 * FRAME))
                moments, end = self._host.picture_after(band, lambda: change(number))
                series.append(milliseconds(moments[carrier], end))
        return floor, ours

    def _change_plain(self, number):
        self._host.order("plain " + score_text(number))
        return dict.fromkeys(("feed_ns", "usb_ns"), self._host.updated())

    def _change_board(self, number):
        return self._simulator.set(self._device_id, scores(number))

    def cloud(self):
        """The moments of change spread over the second between two polls. Polls keep step with the
        frames, so the portal answers up to two frames later, to meet them at every phase."""
        wait = random.Random(2)
        to_reply, to_picture = [], []
        for number in range(1, SLOW_CHANGES + 1):
            self._simulator.fault("portal", "slow", seconds=wait.uniform(0, 2 * FRAME))
            time.sleep(wait.uniform(0, 1))
            (begin, revision), end = self._host.picture_after(
                OURS, lambda: self._change_cloud(number))
            left = portal_moment(revision)
            to_reply.append(milliseconds(begin, left))
            to_picture.append(milliseconds(left, end))
        return to_reply, to_picture

    def _change_cloud(self, number):
        begin = time.monotonic_ns()
        return begin, self._simulator.set(self._device_id, scores(number))["revision"]

    def file(self):
        wait = random.Random(3)
        series = []
        for number in range(1, SLOW_CHANGES + 1):
            time.sleep(wait.uniform(0, 1))
            begin, end = self._host.picture_after(FILE, lambda: self.write_file(number))
            series.append(milliseconds(begin, end))
        return series

    def write_file(self, number):
        new = self._text_file.with_suffix(".new")
        new.write_text(score_text(number))
        begin = time.monotonic_ns()
        os.replace(new, self._text_file)
        return begin


def measure(program, folder, simulator, device_id, env):
    home = ObsHome(folder / "host")
    home.write_session(simulator.cookie)
    home.write_settings({"selected_device": device_id, "routes": {device_id: "lan"},
                         "lan": {device_id: simulator.lan_entry(device_id)}})
    text_file = folder / "score.txt"
    text_file.write_text(score_text(0))
    simulator.set(device_id, scores(0))
    with Host(program, home.module_config, device_id, text_file, env) as host:
        latency = Latency(host, simulator, device_id, text_file)
        host.wait_until_live()
        series = {"lan": latency.floor_and("feed_ns")}
        host.follow(f"usb {simulator.usb_port} {simulator.admin_password(device_id)}")
        series["usb"] = latency.floor_and("usb_ns")
        host.follow("cloud")
        host.forget(FILE)
        with ThreadPoolExecutor() as pool:   # both wait most of the time, in bands of their own
            file = pool.submit(latency.file)
            to_reply, to_picture = latency.cloud()
            file = file.result()
        simulator.clear()
    return rows(series, to_reply, to_picture, file)


def rows(series, to_reply, to_picture, file):
    (floor, lan), (usb_floor, usb) = series["lan"], series["usb"]
    more = median(usb) - median(usb_floor)
    total = [reply + picture for reply, picture in zip(to_reply, to_picture)]
    return [
        Heading("From the data to the first finished frame that shows them"),
        Row("(a) OBS's own text, updated directly: the floor", "ms", floor),
        Row("(b) local network", "ms", lan),
        Row("    over the floor's median", "x", [median(lan) / median(floor)],
            f"<= {FLOOR_FACTOR}", median(lan) <= FLOOR_FACTOR * median(floor)),
        Row("    over the floor's 95 %", "x", [high(lan) / high(floor)]),
        Row("USB cable", "ms", usb),
        Row("    more than the floor's median at that time", "ms", [more],
            f"<= {USB_MORE_MILLISECONDS}", more <= USB_MORE_MILLISECONDS),
        Row("(c) cloud: from the change to the picture", "ms", total),
        Row("    the part until the poll that fetches it", "ms", to_reply),
        Row("    the part from the portal's reply on", "ms", to_picture),
        Row("(d) OBS's own text that reads a file", "ms", file),
        Row("    times the local network's median", "x", [median(file) / median(lan)],
            f">= {FILE_FACTOR}", median(file) >= FILE_FACTOR * median(lan)),
    ]
