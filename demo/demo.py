#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Shows live scores in a real OBS: first over the cloud, then over the local network."""

import argparse
import contextlib
import os
import shutil
import sys
import tempfile
import time
from pathlib import Path

import scoreboard
from obs_home import ObsHome
from obs_session import ObsSession, Timeout, wait_until
from simulator import REPOSITORY, NotInSandbox, Simulator
from xvfb import Xvfb

DEVICE, NICKNAME = "TF-1001", "Main gym"
SCENE = "Scoreboard"
OUTPUT = REPOSITORY / "build/demo"
STATUS = {"cloud": f"Live from {DEVICE}", "lan": f"Live from {NICKNAME} over your network"}
NAMES = {"cloud": "the cloud", "lan": "the local network"}
NEW_DEVICE, FACTORY = "TF-1002", "quietmoose"
ON_A_CABLE = f"""A new device is on a cable as well. To set it up, open Docks > Tallyforge and press
"Set up or manage a device…". Its port is chosen already: press "Connect" and choose a password of your
own. The venue's network is "Venue" with the password courtside-7; any scoreboard will do. At the end,
"Use this device's live scores in OBS" brings its game into the picture."""
PLAYS_BEFORE = 60   # so that the first picture shows a game under way


def say(text):
    print(text, flush=True)


def prepare(home, route, simulator):
    home.write_settings({"selected_device": DEVICE, "routes": {DEVICE: route},
                         "lan": {DEVICE: simulator.lan_entry(DEVICE)}})


def open_scene(obs, home):
    """Fills the scene on the first start; on the next one OBS has brought all of it back."""
    if not obs.request("GetSceneItemList", sceneName=SCENE)["sceneItems"]:
        backdrop = home.folder / "court.png"
        scoreboard.draw_court(backdrop)
        scoreboard.build(obs, SCENE, backdrop)


def scores(fields):
    return fields["home_score"], fields["away_score"]


def play_until_score(simulator):
    """Plays on until somebody scores; returns the fields then."""
    before = fields = simulator.device(DEVICE)["fields"]
    while scores(fields) == scores(before):
        fields = simulator.step()["fields"]
    return fields


def score_pictures(obs):
    return [obs.picture(name).png for name in ("Home score", "Away score")]


def check_score_change(obs, simulator, reference, route):
    """Changes the score and compares the pictures; returns what is wrong."""
    old = simulator.device(DEVICE)["fields"]
    reference.set(old)
    reference.wait()
    before = obs.picture(SCENE)
    shown = score_pictures(obs)
    new = play_until_score(simulator)
    begin = time.monotonic()
    wait_until(lambda: score_pictures(obs) != shown, what="the new score to be drawn")
    seconds = time.monotonic() - begin
    reference.set(new)
    reference.wait()
    after = obs.picture(SCENE)
    expected = reference.picture()
    before.save(OUTPUT / f"{route}-before.png")
    after.save(OUTPUT / f"{route}-after.png")
    change = "score {}:{} -> {}:{}".format(*scores(old), *scores(new))
    if not after.same_as(expected) or after.same_as(before) or after.is_blank:
        expected.save(OUTPUT / f"{route}-expected.png")
        return [f"{change}: the programme picture is not as expected"]
    say(f"  {change} stood in the programme picture after {seconds:.2f} s, "
        f"all {after.size[0]}x{after.size[1]} pixels as OBS's own text source draws them")
    return []


def run_headless(home, simulator, screen):
    faults = []
    for route in ("cloud", "lan"):
        prepare(home, route, simulator)
        with ObsSession(home, screen.env()) as obs:
            obs.wait_for_status(STATUS[route])
            say(f"Over {NAMES[route]}: \"{STATUS[route]}\"")
            open_scene(obs, home)
            reference = scoreboard.Reference(obs, SCENE)
            faults += check_score_change(obs, simulator, reference, route)
            reference.remove()
            # Answered by the window's own thread, so after it has seen the removal.
            obs.request("SetCurrentProgramScene", sceneName=SCENE)
            screen.screenshot(OUTPUT / f"{route}-window.png")
        faults += report_end(obs.ended)
    if simulator.state()["violations"]:
        faults.append("the simulator saw the wire format broken")
    say(f"Pictures: {OUTPUT.relative_to(REPOSITORY)}/")
    return faults


def run_on_display(home, simulator):
    faults = []
    simulator.fault("device", "gone", device=NEW_DEVICE)   # from the account, to which it may be added
    say(ON_A_CABLE)
    for route in ("cloud", "lan"):
        prepare(home, route, simulator)
        with ObsSession(home, {}) as obs:
            open_scene(obs, home)
            say(f"OBS shows a running game, fed over {NAMES[route]}. Close its window to "
                + ("see the same over the local network." if route == "cloud" else "end."))
            obs.wait_for_end()
        faults += report_end(obs.ended)
    return faults


def report_end(ended):
    say(f"  OBS ended with {ended.leaks} memory leaks; its log holds {len(ended.complaints)} "
        "warnings or errors of the plug-in")
    return [f"OBS ended with code {ended.exit_code}"] * (ended.exit_code != 0) \
        + [f"OBS reported {ended.leaks} memory leaks"] * (ended.leaks != 0) + ended.complaints


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--plugin", type=Path,
                        default=REPOSITORY / "build/dev/plugins/tallyforge-obs",
                        help="folder of the built plug-in (%(default)s)")
    parser.add_argument("--headless", action="store_true", default=bool(os.environ.get("HEADLESS")),
                        help="on a virtual screen, with checks; also when HEADLESS is set")
    return parser.parse_args()


def run(options):
    if not list(options.plugin.glob("bin/64bit/*.so")):
        return [f"There is no built plug-in in {options.plugin}."]
    display = any(os.environ.get(name) for name in ("DISPLAY", "WAYLAND_DISPLAY"))
    headless = options.headless or not display
    shutil.rmtree(OUTPUT, ignore_errors=True)
    OUTPUT.mkdir(parents=True)
    with contextlib.ExitStack() as stack:
        folder = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="tallyforge-demo-")))
        devices = [f"{DEVICE}={NICKNAME}"] if headless else [f"{DEVICE}={NICKNAME}", f"{NEW_DEVICE}=Pool"]
        simulator = stack.enter_context(Simulator(
            folder / "sim", devices, *(["--manual"] if headless else
                                       ["--usb", NEW_DEVICE, "--admin-password", f"{NEW_DEVICE}={FACTORY}"])))
        simulator.step(PLAYS_BEFORE)
        home = ObsHome(folder / "home", SCENE)
        home.install(options.plugin)
        home.write_session(simulator.cookie)
        stack.callback(keep_log, home)
        if headless:
            return run_headless(home, simulator, stack.enter_context(Xvfb()))
        return run_on_display(home, simulator)


def keep_log(home):
    """So that a user can see why something failed."""
    with contextlib.suppress(FileNotFoundError):
        shutil.copy(home.output, OUTPUT / "obs-log.txt")


def main():
    try:
        faults = run(arguments())
    except (NotInSandbox, Timeout, OSError, RuntimeError) as error:
        faults = [str(error)]
    except KeyboardInterrupt:
        return "Interrupted."
    for fault in faults:
        say(f"FAULT: {fault}")
    where = OUTPUT.relative_to(REPOSITORY)
    say(f"The demo failed. OBS's log: {where}/obs-log.txt" if faults else "All is well.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
