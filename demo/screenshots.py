#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Takes pictures of the dock and the setup dialog in their states, in a real OBS with the themes that users have.

They go to build/screenshots; a few of them go into docs/images too, from where texts show them."""

import argparse
import contextlib
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path
from types import SimpleNamespace

from obs_session import Timeout, wait_until
from simulator import REPOSITORY, NotInSandbox
from xvfb import Xvfb

sys.path.insert(0, str(REPOSITORY / "tests/e2e"))
import docks    # noqa: E402: it has to be found first
import update   # noqa: E402
from dock import DOCK   # noqa: E402
from setup_pictures import take_account, take_pages, take_setup   # noqa: E402
from stage import Stage       # noqa: E402
from window import has   # noqa: E402

OUTPUT, IMAGES = REPOSITORY / "build/screenshots", REPOSITORY / "docs/images"
SCREEN = 1440, 1500
WIDTHS = {"narrow": 250, "wide": 440}
LONG = "The big hall of the Westside community sports centre"
DEVICES = [f"TF-1001={LONG}", *(f"TF-{1000 + n}=Court {n}" for n in range(2, 13))]
ID = "TF-1001"
SCORES = {"home_score": 58, "away_score": 61, "period": 4, "clock": "2:07"}
CHANGES = f"## {update.NEW}, 2026-03-01\n\n- The clock stops with the board's.\n- Starts quicker.\n"


@dataclass(frozen=True)
class Look:
    theme: str
    scale: int = 1
    options: tuple = ()
    language: str = "en-US"


LOOKS = {"dark": Look("Yami.Original"), "light": Look("Yami.Light"), "classic": Look("Yami.Classic"),
         "double": Look("Yami.Original", scale=2), "mirrored": Look("Yami.Original", options=("-reverse",)),
         "german": Look("Yami.Original", language="de-DE")}
TEXTS_SHOW = {   # docs/images: of which look and state
    "dock-signed-out": ("dark", "signed-out-wide"), "dock-live": ("dark", "live-wide"),
    "dock-update": ("dark", "update-available-wide"), "dock-light": ("light", "live-wide"),
    **{f"setup-{page}": ("dark", page) for page in ("cable", "wifi", "all-set", "status", "receiver",
                                                    "settings", "new-token", "installing")},
    "account": ("dark", "account")}


class Camera:
    """Takes a picture of each state in each width."""

    def __init__(self, screen, dock, folder, scale):
        self._screen, self.dock, self._folder, self._scale = screen, dock, folder, scale
        self._count = 0

    def take(self, state):
        self._count += 1
        for width, pixels in WIDTHS.items():
            self.dock.place(20, pixels * self._scale, (SCREEN[1] - 60) * self._scale)
            self._picture(f"{state}-{width}")

    def take_as_it_is(self, state):
        """With what has opened over it."""
        self._count += 1
        self._picture(state)

    def take_moment(self, state, process, is_now):
        """Of a state that soon passes: the program stands still meanwhile."""
        self._count += 1
        name = f"{state}-wide"
        pages = [{}]
        while not (is_now(pages[-1]) and len(pages) > 2 and is_now(pages[-2])):
            pages.append(self.dock.page())
        process.send_signal(signal.SIGSTOP)
        try:
            self._cut_out(name, pages[-1])
        finally:
            process.send_signal(signal.SIGCONT)

    def _settle(self):
        """Until nothing is laid out or drawn any more."""
        seen = []

        def is_still():
            seen.append(self.dock.page())
            return len(seen) > 1 and seen[-1] == seen[-2]
        with contextlib.suppress(Timeout):   # a bar may be running
            wait_until(is_still, 2)

    def _picture(self, name):
        self._settle()
        self._cut_out(name, self.dock.page())

    def _cut_out(self, name, page):
        x, y, width, _ = page[DOCK]["rect"]
        rects = [widget["rect"] for name, widget in page.items()
                 if name.startswith("tallyforge") and name != DOCK]
        bottom = max(top + height for _, top, _, height in rects) + 6 * self._scale
        path = self._folder / f"{self._count:02}-{name}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        self._screen.screenshot(path)
        subprocess.run(["convert", path, "-crop", f"{width}x{bottom - y}+{x}+{y}", "+repage", path],
                       check=True)


def account_states(sim, dock, camera):
    """Ends with twelve devices of which one is followed."""
    coach, crew = (docks.COACH, docks.SECRET), docks.CREW

    def sign_in(email, password):
        dock.fill("tallyforgeEmail", email)
        dock.fill("tallyforgePassword", password)
        dock.click("tallyforgeSignInButton")
    camera.take("signed-out")
    sign_in(crew[0], "wrong")
    dock.wait_for_text("tallyforgeSignInMessage", docks.WRONG_PASSWORD)
    camera.take("wrong-password")
    sign_in(*coach)
    dock.wait_for("tallyforgeCode")
    camera.take("second-step")
    dock.fill("tallyforgeCode", "111111")
    dock.key("Return")
    dock.wait_for_text("tallyforgeSignInMessage", docks.WRONG_CODE)
    camera.take("wrong-code")
    for count, state in ((0, "no-devices"), (1, "one-device"), (12, "twelve-devices")):
        sim.clear()
        for number in list(sim.devices)[count:]:
            sim.fault("device", "gone", device=number)
        if count:
            dock.click("tallyforgeSignOut")
            dock.wait_for("tallyforgeSignIn")
            sign_in(*crew)
        else:
            dock.fill("tallyforgeCode", docks.CODE)
            dock.key("Return")
        wanted = max(count, 1)
        dock.wait_for("tallyforgeDevice", items=lambda items: len(items) == wanted)
        camera.take(state)


def live_states(sim, dock, camera):
    device = f"{LONG} ({ID})"
    dock.open_list("tallyforgeDevice", device)
    camera.take_as_it_is("device-list")
    dock.pick("tallyforgeDevice", device)   # because a sign-out ends what was followed
    sim.set(ID, SCORES)
    dock.wait_for_text("tallyforgeScore", "58 – 61   ·   4   ·   2:07")
    camera.take("live")
    sim.fault("device", "offline", device=ID)
    dock.wait_for_text("tallyforgeStatus", has("offline"))
    camera.take("offline")
    sim.clear()
    dock.toggle("tallyforgeUseLan")
    dock.wait_for_text("tallyforgeStatus", has("over your network"))
    camera.take("over-network")
    sim.fault("feed", "away", device=ID)
    dock.wait_for_text("tallyforgeStatus", has("Could not"))
    camera.take("network-lost")
    sim.clear()
    dock.toggle("tallyforgeUseLan")
    dock.wait_for_text("tallyforgeStatus", lambda text: text.endswith(f"Live from {ID}"))


def server_states(dock, camera):
    with socket.create_server(("127.0.0.1", docks.PORT)):
        dock.toggle("tallyforgeServerEnabled")
        dock.wait_for_text("tallyforgeServerStatus", has("Could not start"))
        camera.take("port-taken")
    dock.toggle("tallyforgeServerEnabled")
    dock.wait_for_text("tallyforgeServerStatus", "Off.")
    dock.toggle("tallyforgeServerEnabled")
    with socket.create_connection(("127.0.0.1", docks.PORT)):
        dock.wait_for_text("tallyforgeServerStatus", has("1 connected"))
        camera.take("server-on")
    dock.wait_for_text("tallyforgeServerStatus", has("0 connected"))


def update_states(sim, offer, obs, dock, camera):
    def check_ends(state, part, before=None):
        if before:
            before()
        dock.click("tallyforgeCheckForUpdates")
        dock.wait_for_text("tallyforgeUpdateStatus", has(part))
        camera.take(state)
        sim.clear()

    def title(part):
        dock.wait_for_text("tallyforgeUpdateTitle", has(part))
    check_ends("update-checking", "Checking", lambda: sim.fault("updates", "hang"))
    dock.wait_for("tallyforgeUpdateTitle")
    offered = (offer.folder / "latest.json").read_text()
    (offer.folder / "latest.json").write_text(offered.replace(update.NEW, update.OLD))
    check_ends("update-none", "up to date")
    (offer.folder / "latest.json").write_text(offered)
    check_ends("update-check-failed", "not readable", lambda: sim.fault("updates", "garbage"))
    check_ends("update-available", "available")
    sim.fault("updates", "cut", path=update.PACKAGE)
    dock.click("tallyforgeUpdateNow")
    title("did not finish")
    camera.take("update-failed")
    sim.fault("updates", "stall", path=update.PACKAGE)
    dock.click("tallyforgeUpdateNow")
    title("Downloading")
    camera.take("update-downloading")
    obs.request("StartRecord")
    sim.clear()
    camera.take_moment("update-installing", obs.process, lambda page: "Installing" in page.get(
        "tallyforgeUpdateTitle", {}).get("text", ""))
    title("Restart OBS")
    camera.take("update-restart-recording")
    obs.request("StopRecord")


def take_all(stage, look, folder):
    """Every state of the dock in one look."""
    offer = update.Offer(stage, update.FILLER_BYTES, CHANGES)
    account = f"{docks.COACH}:{docks.SECRET}:{docks.CODE}"
    with stage.venue(*DEVICES, options=("--account", account, "--updates", str(offer.folder))) as sim:
        home = docks.signed_out(stage)
        home.write_settings({"lan": {ID: sim.lan_entry(ID)}, "auto_check_updates": False})
        home.choose_theme("com.obsproject." + look.theme)
        with docks.opened(stage, home, options=look.options, warnings=[docks.TAKEN]) as (obs, dock):
            camera = Camera(stage.screen, dock, folder, look.scale)
            account_states(sim, dock, camera)
            live_states(sim, dock, camera)
            server_states(dock, camera)
            update_states(sim, offer, obs, dock, camera)
        take_for_all_users(stage, home, camera)


def take_for_all_users(stage, home, camera):
    """Where the plug-in may not change itself, because the user has no rights there."""
    plugin = update.plugin_of(home)
    shutil.copytree(stage.built.plugin, plugin, dirs_exist_ok=True)
    plugin.chmod(0o555)
    with stage.obs(home, wrapper=("unshare", "--user")):
        camera.dock.wait_for("tallyforgeCheckForUpdates")
        camera.dock.click("tallyforgeCheckForUpdates")
        camera.dock.wait_for("tallyforgeOpenDownloadPage")
        camera.take("update-for-all-users")


def take_look(built, name, look):
    width, height = (pixels * look.scale for pixels in SCREEN)
    os.environ["QT_SCALE_FACTOR"] = str(look.scale)
    with tempfile.TemporaryDirectory(prefix="tallyforge-screenshots-") as folder, \
            Xvfb(f"{width}x{height}") as screen:
        stage = Stage(built, Path(folder), screen)
        is_english = look.language.startswith("en")
        for take in (take_all, take_setup, take_account) if is_english else (take_pages,):
            take(stage, look, OUTPUT / name)


def built_in(build):
    names = {"plugin": "tallyforge-obs", "browser": "browser-standin", "finder": "dock-finder"}
    folders = {key: build / "plugins" / name for key, name in names.items()}
    return SimpleNamespace(**folders, next=build / "next")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--only", choices=LOOKS, help="take one look alone")
    parser.add_argument("--build", type=Path, default=REPOSITORY / "build/dev",
                        help="folder in which the preset dev was built (%(default)s)")
    options = parser.parse_args()
    looks = [options.only] if options.only else LOOKS
    try:
        for name in looks:
            shutil.rmtree(OUTPUT / name, ignore_errors=True)
            take_look(built_in(options.build), name, LOOKS[name])
            print(f"{name}: {len(list((OUTPUT / name).iterdir()))} pictures in "
                  f"{(OUTPUT / name).relative_to(REPOSITORY)}", flush=True)
    except (NotInSandbox, Timeout) as error:
        return str(error)
    for target, (look, state) in TEXTS_SHOW.items():
        for source in (OUTPUT / look).glob(f"*-{state}.png") if look in looks else ():
            IMAGES.mkdir(exist_ok=True)
            shutil.copy(source, IMAGES / f"{target}.png")
    return None


if __name__ == "__main__":
    sys.exit(main())
