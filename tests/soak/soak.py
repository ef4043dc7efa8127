#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Match days in a real OBS: games over every route in turn, while whatever can go wrong does."""

import argparse
import contextlib
import os
import random
import statistics
import sys
import tempfile
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parents[1] / "demo"), str(HERE.parent / "e2e")]

import crowd
import routes
from docks import FAILED, opened
from gauges import Gauges
from obs_session import wait_until
from setup import SetupWindow
from simulator import REPOSITORY
from stage import FRAME_RATE, Score, Stage, check
from update import Offer
from xvfb import Xvfb

BUILT = REPOSITORY / "build/dev"
DEVICES = [f"{routes.MAIN}=Main gym", f"{routes.POOL}=Pool@127.0.0.2"]
OPTIONS = ["--usb", routes.MAIN, "--ble", routes.MAIN, "--lan-port", str(routes.ADMIN_PORT), "--pace", "10",
           *(word for device in (routes.MAIN, routes.POOL)
             for word in ("--admin-password", f"{device}={routes.OWN}"))]
SHORT_RUNS = 2             # of OBS, with a leg each, before the long one: it is closed and started again
MISHAPS = 3                # on each leg
PLAYS = (5, 40)            # of the game between two looks
FRAMES = 2
LATE_SECONDS, LATE_ONE_IN = 0.5, 8   # both processors are OBS's renderer as well
HELD_MILLISECONDS = 16
LAST_EVENTS = 25
SHORTEST_SECRET = 8        # characters: a shorter one, such as a code, stands in other files by chance
SETTINGS = {"server_enabled": True, "auto_check_updates": False, "routes": {}}


class Journal:
    def __init__(self):
        self._begin = time.monotonic()
        self._events = []

    def note(self, text):
        line = f"{time.monotonic() - self._begin:7.1f} s  {text}"
        self._events.append(line)
        print(line, flush=True)

    def last(self):
        return self._events[-LAST_EVENTS:]


class Show:
    """A run of OBS on which games are watched. The seed decides what happens on which leg, whatever
    time that takes."""

    def __init__(self, soak, obs, dock):
        self._soak = soak
        self.obs, self.dock = obs, dock
        self.sim = soak.sim
        self.setup = SetupWindow(dock)
        self.score = Score(obs)
        self.witness = crowd.Witness(routes.LABELS)
        self.gauges = Gauges(obs)
        self.held = []
        self.route = self.rng = None

    @property
    def count(self):
        """Goes up with each leg, so that what is made from it is new."""
        return self._soak.legs

    def leg(self, route, rng):
        self.route, self.rng = route, rng
        self._soak.journal.note(f"leg {self.count}: {route.name}")
        route.choose(self)
        self.obs.wait_for_status(route.live, routes.BACK)
        self.play()
        for mishap in rng.sample(route.mishaps + routes.ANYWHERE, MISHAPS):
            self._soak.journal.note(f"  {mishap.__name__}")
            mishap(self)
            self.obs.wait_for_status(route.live, routes.BACK)
            self.play()
        check(not self.witness.wrong, f"{self.witness.wrong[:3]}")
        check(self._soak.survives(), "settings and sign-in survive")
        self.gauges.read()

    def play(self):
        """Some of the game, then a score that must come to stand in the picture."""
        with self.dock.desktop.watch_main_thread() as held:
            for _ in range(self.rng.randint(*PLAYS)):
                self.sim.step()
                time.sleep(1 / FRAME_RATE)
            self._soak.keep_scores_apart(self.rng)
            self.point()
        self.held.append(max(held["used"]))

    def point(self, joined=False):
        """The device's latest state must be drawn in the time that the route may take. A line that is
        held back until another one comes needs that one."""
        device = self.route.device
        points = self._soak.new_points(device, self.rng)
        text = "{home_score} - {away_score}".format(**points)
        self.obs.set_text(self.score.plain, text)
        wish = self.obs.picture(self.score.plain)
        begin = time.monotonic()
        self.sim.set(device, points)
        if joined:
            self.sim.set(device, {"clock": "joined"})
        looked = wait_until(lambda: self._looks_like(wish), routes.BACK, f"{text} to be drawn")
        self._soak.took(self.route, looked - begin)

    def _looks_like(self, wish):
        """When the picture was asked for, if it is as wished: OBS draws it then, and takes its time to
        pack it up."""
        asked = time.monotonic()
        now = self.obs.picture(self.score.live)
        return asked if now and now.same_as(wish) else None

    def expect_live(self):
        """It has not stopped: there is nothing to wait for."""
        self.obs.wait_for_status(self.route.live, 0)

    def expect_not_live(self, seconds):
        wait_until(lambda: not self.obs.statuses()[-1].startswith("Live from"), seconds,
                   "the status line to tell that it isn't live")

    def visit_port(self):
        crowd.visit(self.rng)

    def free_port(self):
        """Once the cable is in again and OBS has let go of it."""
        def is_free():
            usb = self.sim.device(routes.MAIN)["usb"]
            if usb["open"] and self.dock.widget("tallyforgeStopRelays"):
                self.dock.click("tallyforgeStopRelays")   # the device has kept its way to the cloud
            return usb["plugged"] and not usb["open"]
        wait_until(is_free, what="the port to be free")


class Soak:
    def __init__(self, stage, seed, minutes):
        self._stage = stage
        self._seed = seed
        self._seconds = minutes * 60
        self.journal = Journal()
        self.legs = 0
        self._late = {}     # seconds over what a route may take, by route
        self._points = {routes.MAIN: 0, routes.POOL: 500}
        self.sim = self._home = None

    def run(self):
        offer = Offer(self._stage)
        with self._stage.venue(*DEVICES, options=(*OPTIONS, "--updates", str(offer.folder))) as self.sim:
            self._home = self._stage.home(SETTINGS | {
                "lan": {device: self.sim.lan_entry(device) for device in routes.LABELS}})
            self._home.write_collection("Other", "Elsewhere")
            self.keep_scores_apart(random.Random(self._seed))
            begin = time.monotonic()
            for _ in range(SHORT_RUNS):
                self._run_obs(lambda: False)
            show = self._run_obs(lambda: time.monotonic() - begin < self._seconds)
            self._check_files(self.sim.secrets())
        self._check_delays()
        told, faults = show.gauges.judge()
        self.journal.note(told)
        check(not faults, "; ".join(faults))
        self.journal.note(f"{show.witness.snapshots} snapshots at the port in the last run of OBS, none "
                          f"under a wrong name; main thread at work for {max(show.held):.1f} ms on end "
                          f"at most, median {statistics.median(show.held):.1f}")
        check(max(show.held) < HELD_MILLISECONDS, f"the main thread was at work for {max(show.held):.1f} ms")

    def _run_obs(self, goes_on):
        with opened(self._stage, self._home, is_open=self.legs > 0) as (obs, dock):
            show = Show(self, obs, dock)
            try:
                while True:
                    rng = random.Random(f"{self._seed}/{self.legs}")
                    show.leg(self._route(), rng)
                    self.legs += 1
                    if not goes_on():
                        break
            finally:
                show.witness.close()
        self.journal.note(f"OBS has ended after {obs.ended.seconds:.2f} s, with {obs.ended.leaks} leaks")
        return show

    def _route(self):
        """All of them in each round, in an order that is drawn for it."""
        count = len(routes.ROUTES)
        order = random.Random(f"{self._seed}/round {self.legs // count}").sample(range(count), count)
        return routes.ROUTES[order[self.legs % count]]

    # What the venue shows

    def keep_scores_apart(self, rng):
        """So that a score tells whose it is: a game would begin with nought for both."""
        for device in self._points:
            self.sim.set(device, self.new_points(device, rng))

    def new_points(self, device, rng):
        base = self._points[device] // 500 * 500
        self._points[device] = base + (self._points[device] - base + 1) % 500
        return {"home_score": self._points[device], "away_score": rng.randint(0, 99)}

    # What must hold

    def survives(self):
        settings = self._home.settings()
        return (self._home.module_config / "session.json").exists() and all(
            settings.get(key) == SETTINGS[key] for key in ("server_enabled", "auto_check_updates")) \
            and settings["lan"].keys() == routes.LABELS.keys()

    def took(self, route, seconds):
        late = seconds - route.delay - FRAMES / FRAME_RATE
        self._late.setdefault(route.name, []).append(late)
        if late > 0:
            self.journal.note(f"  drawn {late * 1000:.0f} ms late")
        check(late <= LATE_SECONDS, f"a score over {route.name} was drawn after {seconds:.2f} s")

    def _check_delays(self):
        for name, late in sorted(self._late.items()):
            count = sum(seconds > 0 for seconds in late)
            self.journal.note(f"{name}: {len(late)} scores, {count} later than it should be, "
                              f"the last by {max(late) * 1000:+.0f} ms")
            check(count * LATE_ONE_IN <= max(len(late), LATE_ONE_IN), f"{count} of {len(late)} are late")

    def _check_files(self, secrets):
        """The two files that hold secrets are meant to."""
        meant = {self._home.module_config / name for name in ("settings.json", "session.json")}
        secrets = [secret.encode() for secret in secrets if len(secret) >= SHORTEST_SECRET]
        for file in self._home.config.rglob("*"):
            if file.is_file() and file not in meant:
                content = file.read_bytes()
                check(not any(secret in content for secret in secrets), f"{file} holds a secret")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=float(os.environ.get("SOAK_MINUTES") or 10))
    parser.add_argument("--seed", default=os.environ.get("SOAK_SEED") or str(random.randrange(1 << 32)))
    options = parser.parse_args()
    built = argparse.Namespace(plugin=BUILT / "plugins/tallyforge-obs", browser=BUILT / "plugins/browser-standin",
                               finder=BUILT / "plugins/dock-finder", next=BUILT / "next")
    print(f"Seed {options.seed}, {options.minutes:g} minutes", flush=True)
    with tempfile.TemporaryDirectory(prefix="tallyforge-soak-") as folder, Xvfb() as screen:
        soak = Soak(Stage(built, Path(folder), screen), options.seed, options.minutes)
        try:
            soak.run()
        except Exception as error:
            print("", *soak.journal.last(), f"{type(error).__name__}: {error}", sep="\n")
            with contextlib.suppress(StopIteration):
                log = max(Path(folder).glob("*/obs-output.txt"), key=lambda file: file.stat().st_mtime)
                print("--- the end of OBS's log", *log.read_text(errors="replace").splitlines()[-30:], sep="\n")
            print(f"The soak failed; SOAK_SEED={options.seed} does the same again. Picture: {FAILED}")
            return 1
    print("All is well.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
