# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the plug-in's own updates in a real OBS: one that works, those that are refused,
and the files that are left when OBS ends on the way."""

import contextlib
import hashlib
import json
import os
import shutil
import stat
import sys
import time
import zipfile
from pathlib import Path

from obs_home import MODULE
from obs_session import wait_until
from scenarios import CLOUD
from stage import check

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "packaging"))
import package  # noqa: E402: it has to be found first

OLD, NEW = "1.0.1", "1.1.0"
MANIFEST = "/downloads/obs/latest.json"
PACKAGE = "/downloads/obs/tallyforge-obs-"
CHANGES = f"## {NEW}, 2026-03-01\n\n- Quicker.\n- Sturdier.\n"
DOWNLOADING = "package.zip"
FILLER_BYTES = 40_000_000   # makes the unpacking last long enough to be met

UNREACHABLE = "Could not reach the Tallyforge update service. Check your internet connection."
UNFINISHED = "The download did not finish. Check your internet connection and try again."
ON_PACKAGE = {"path": PACKAGE}
REFUSED = [   # what the server does, where that is noticed, and what the user is told
    ({"kind": "refuse"}, "check", UNREACHABLE),
    ({"kind": "garbage"}, "check", "The update information was not readable."),
    ({"kind": "cut"} | ON_PACKAGE, "install", UNFINISHED),
    ({"kind": "redirect", "to": "http://localhost:8099/state"} | ON_PACKAGE, "install", UNFINISHED),
    ({"kind": "redirect", "to": "file:///etc/hostname"} | ON_PACKAGE, "install", UNFINISHED),
    ({"kind": "wrong-hash", "path": MANIFEST}, "install",
     "The download did not match its checksum, so it was discarded. Nothing was changed."),
    ({"kind": "wrong-size", "path": MANIFEST}, "install",
     "The download was incomplete, so it was discarded. Try again."),
]
LINK = "The update package contained an unexpected link, so it was rejected. Nothing was changed."
FOR_ALL = ("This copy of the plugin was installed for all users, so it cannot update itself. "
           "Download and run the installer from https://localhost:8444/download.")


def tree(folder):
    """The files of a plug-in: their content, and whether they are programs."""
    return {path.relative_to(folder).as_posix(): (
                hashlib.sha256(path.read_bytes()).hexdigest(), bool(path.stat().st_mode & 0o100))
            for path in folder.rglob("*") if not path.is_dir()}


class Offer:
    """The newer version on the maker's server."""

    def __init__(self, stage, filler=0, changes=CHANGES):
        self.folder = stage.new_folder("updates")
        self.plugin = stage.new_folder("next") / MODULE
        facts = package.facts_of(stage.built.next / "tallyforge-release-facts")
        shutil.copytree(stage.built.plugin, self.plugin)
        shutil.copy(stage.built.next / "tallyforge-obs.so", self.plugin / facts["binary"])
        if filler:
            (self.plugin / "data/filler").write_bytes(os.urandom(filler))
        self.package = package.make(self.plugin, facts, self.folder, changes)
        self.trees = {OLD: tree(stage.built.plugin), NEW: tree(self.plugin)}

    def venue(self, stage):
        return stage.venue(options=("--updates", str(self.folder)))

    @contextlib.contextmanager
    def with_link(self):
        """Offers a package that has a link in it as well, under the right hash."""
        manifest = self.folder / "latest.json"
        kept = manifest.read_bytes(), self.package.read_bytes()
        with zipfile.ZipFile(self.package, "a") as archive:
            link = zipfile.ZipInfo(f"{MODULE}/data/link")
            link.create_system, link.external_attr = 3, (stat.S_IFLNK | 0o777) << 16
            archive.writestr(link, "locale")
        data, told = self.package.read_bytes(), json.loads(kept[0])
        for entry in told["packages"].values():
            entry |= {"sha256": hashlib.sha256(data).hexdigest(), "size": len(data)}
        manifest.write_text(json.dumps(told))
        yield
        manifest.write_bytes(kept[0])
        self.package.write_bytes(kept[1])


class Updater:
    """The updater of a running OBS, over the driver module."""

    def __init__(self, obs):
        self._obs = obs
        self.staging = obs.home.module_config / "update"
        self._record = obs.home.folder / "updater.jsonl"
        self._begin = len(self._lines())

    def _lines(self):
        return self._record.read_text().splitlines() if self._record.exists() else []

    def told(self):
        """What it has told since OBS started, oldest first."""
        return [json.loads(line) for line in self._lines()[self._begin:]]

    def press(self, action):
        self._obs.request("TriggerHotkeyByName", hotkeyName="updates." + action)

    def ask(self, action, state, message, timeout=30):
        """Presses, waits for a state, and returns it with what goes with it."""
        before = len(self.told())
        self.press(action)
        found = wait_until(lambda: next((t for t in self.told()[before:] if t["state"] in
                                         (state, "Failed")), None), timeout, f"{state} after {action}")
        check((found["state"], found["message"]) == (state, message), f"{action} ended in {found}")
        return found

    def ask_for_update(self):
        return self.ask("check", "Available", f"Version {NEW} is available.")

    def ask_for_installation(self):
        return self.ask("install", "Installed",
                        f"Version {NEW} is installed. Restart OBS to start using it.")


def updatable(stage, **settings):
    home = stage.home({"server_port": 9055} | settings)
    home.install(stage.built.driver, "updater-driver")
    return home


def plugin_of(home):
    return home.config / "plugins" / MODULE


def check_whole(home, offer, version, what):
    found = tree(plugin_of(home))
    check(found == offer.trees[version], f"{what}: the files are those of {version}, not {found}")
    neighbours = {path.name for path in plugin_of(home).parent.iterdir()}
    check(neighbours == {MODULE, "browser-standin", "updater-driver"}, f"{what}: {neighbours}")


def check_clean(home):
    """Nothing lies about that belongs to nobody, but for the version before."""
    left = [path for path in home.config.rglob("*") if path.name.endswith((".old", ".new", ".zip"))]
    staged = {path.name for path in home.module_config.glob("update/*")}
    check(not left and staged <= {"previous"}, f"left over: {left}, {staged}")


def update(stage):
    offer = Offer(stage)
    with offer.venue(stage) as sim:
        home = updatable(stage)
        begin = int(time.time())
        (plugin_of(home) / "data/left.old").write_text("")   # the start must tidy it up
        with stage.obs(home) as obs:
            obs.wait_for_log(f"loading plugin {OLD}")
            obs.wait_for_status(CLOUD)
            updater = Updater(obs)
            found = updater.ask("due", "Available", f"Version {NEW} is available.")
            check((found["version"], found["notes"]) == (NEW, "Quicker.\nSturdier."), f"{found}")
            settings = home.settings()
            check(begin <= settings["last_update_check"] <= time.time(), "the time of the check is kept")
            asked = sim.state()["updates"]["requests"]
            check([request["path"] for request in asked] == [MANIFEST], f"{asked}")
            check(asked[0]["agent"] == f"Tallyforge-OBS/{OLD} (linux-{os.uname().machine})", f"{asked}")
            check_whole(home, offer, OLD, "before the installation")
            updater.ask_for_installation()
            states = [told["state"] for told in updater.told()]
            order = [state for state, before in zip(states, [None, *states]) if state != before]
            check(order == ["Checking", "Available", "Downloading", "Installing", "Installed"], f"{order}")
            obs.wait_for_log(f"plugin {NEW} installed; takes effect on the next OBS start")
            check_whole(home, offer, NEW, "after the installation")
            sim.set("TF-1001", {"home_score": 7})
            obs.wait_for_status(CLOUD)
        check_clean(home)
        with stage.obs(home) as obs:
            obs.wait_for_log(f"loading plugin {NEW}")
            obs.wait_for_status(CLOUD)
            Updater(obs).ask("due", "UpToDate", f"Tallyforge {NEW} is up to date.")
            check(home.settings().keys() == settings.keys() and home.settings()["server_port"] == 9055,
                  "the settings are kept")
        check_whole(home, offer, NEW, "after the second run")
        check_clean(home)


def update_refused(stage):
    offer = Offer(stage)
    with offer.venue(stage) as sim:
        home = updatable(stage, auto_check_updates=False)
        with stage.obs(home) as obs:
            updater = Updater(obs)
            updater.press("due")
            for fault, step, message in REFUSED:
                sim.fault("updates", **fault)
                if step == "install":
                    updater.ask_for_update()
                updater.ask(step, "Failed", message)
                sim.clear("updates")
                check_whole(home, offer, OLD, f"after {fault}")
            requests = sim.state()["updates"]["requests"]
            wanted = sum(2 if step == "install" else fault["kind"] != "refuse"
                         for fault, step, _ in REFUSED)
            check(len(requests) == wanted, f"nothing but what was asked for: {requests}")
            with offer.with_link():
                updater.ask_for_update()
                updater.ask("install", "Failed", LINK)
            check_whole(home, offer, OLD, "after a package with a link")
        plugin_of(home).chmod(0o555)
        # In a user namespace without a mapping root is nobody in particular, and rights count.
        with stage.obs(home, wrapper=("unshare", "--user")) as obs:
            obs.wait_for_log(f"loading plugin {OLD}")
            Updater(obs).ask_for_update()
            Updater(obs).ask("install", "Failed", FOR_ALL)
        plugin_of(home).chmod(0o755)
        check_whole(home, offer, OLD, "where it may not be changed")
        with stage.obs(home) as obs:
            Updater(obs).ask_for_update()
            Updater(obs).ask_for_installation()
        check_whole(home, offer, NEW, "after all")


def meet(sim, updater, sign):
    """Starts the installation and returns once this lies in the staging folder."""
    if sign == DOWNLOADING:
        sim.fault("updates", "stall", path=PACKAGE)
    updater.press("install")
    if sign == DOWNLOADING:
        wait_until(lambda: sim.state()["updates"]["hanging"], what="half a package")
    deadline = time.monotonic() + 30
    while not (updater.staging / sign).exists():   # without a pause: some of it is soon gone
        if time.monotonic() > deadline:
            raise AssertionError(f"{sign} never came: {updater.told()}")


def check_next_start(stage, home, offer, what):
    """Whatever has happened, a whole plug-in starts and can be brought up to date."""
    with stage.obs(home) as obs:
        version = obs.wait_for_log(r"loading plugin ([\d.]+)")[1]
        obs.wait_for_status(CLOUD)
        check_whole(home, offer, version, what)
        if version == OLD:
            Updater(obs).ask_for_update()
            Updater(obs).ask_for_installation()
    check_whole(home, offer, NEW, f"{what}, then installed")
    print(f"{what}: {version} was left")


def _end_on_the_way(stage, run, end):
    offer = Offer(stage, FILLER_BYTES)
    with offer.venue(stage) as sim:
        for sign in (DOWNLOADING, "extracted", f"extracted/{MODULE}/data/filler", "previous"):
            home = updatable(stage)
            with run(home) as obs:
                Updater(obs).ask_for_update()
                meet(sim, Updater(obs), sign)
                end(obs)
            sim.clear("updates")
            check_next_start(stage, home, offer, f"ended at {sign}")


def update_killed(stage):
    def kill(obs):
        obs.process.kill()
        obs.process.wait()
    _end_on_the_way(stage, stage.session, kill)


def update_closed(stage):
    _end_on_the_way(stage, stage.obs, lambda obs: obs.stop())
