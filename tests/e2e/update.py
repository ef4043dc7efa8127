# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the plug-in's own updates in a real OBS: one that works, those that are refused,
and the files that are left when OBS ends on the way."""

import hashlib
import os
import shutil
import sys
import time
from pathlib import Path

from docks import opened
from obs_home import MODULE
from obs_session import wait_until
from scenarios import CLOUD
from stage import check
from window import has

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "packaging"))
import package  # noqa: E402: it has to be found first

OLD, NEW = "1.0.1", "1.1.0"
MANIFEST = "/downloads/obs/latest.json"
PACKAGE = "/downloads/obs/tallyforge-obs-"
CHANGES = f"## {NEW}, 2026-03-01\n\n- Quicker.\n- Sturdier.\n"
DOWNLOADING = "package.zip"
FILLER_BYTES = 40_000_000   # makes the unpacking last long enough to be met

RECORDING = " OBS is streaming or recording right now, so wait until you are done."
RESTART = f"Restart OBS to finish updating to version {NEW}."
DAMAGED = "The download did not match its checksum, so it was discarded. Nothing was changed."


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


def look(dock):
    """For the newer version, which is on offer then."""
    dock.click("tallyforgeCheckForUpdates")
    dock.wait_for_text("tallyforgeUpdateTitle", f"Tallyforge {NEW} is available (you have {OLD}).")


def install(dock, told=RESTART):
    look(dock)
    dock.click("tallyforgeUpdateNow")
    dock.wait_for_text("tallyforgeUpdateTitle", told)


def updatable(stage):
    return stage.home({"server_port": 9055, "auto_check_updates": False})


def plugin_of(home):
    return home.config / "plugins" / MODULE


def check_whole(home, offer, version, what):
    found = tree(plugin_of(home))
    check(found == offer.trees[version], f"{what}: the files are those of {version}, not {found}")
    neighbours = {path.name for path in plugin_of(home).parent.iterdir()}
    check(neighbours == {MODULE, "browser-standin", "dock-finder"}, f"{what}: {neighbours}")


def check_clean(home):
    """Nothing lies about that belongs to nobody, but for the version before."""
    left = [path for path in home.config.rglob("*") if path.name.endswith((".old", ".new", ".zip"))]
    staged = {path.name for path in home.module_config.glob("update/*")}
    check(not left and staged <= {"previous"}, f"left over: {left}, {staged}")


def update(stage):
    """From the version of before to the next one, in the middle of a recording."""
    offer = Offer(stage)
    with offer.venue(stage) as sim:
        home = updatable(stage)
        begin = int(time.time())
        (plugin_of(home) / "data/left.old").write_text("")   # the start must tidy it up
        with opened(stage, home) as (obs, dock):
            obs.wait_for_status(CLOUD)
            check("tallyforgeUpdateBanner" not in dock.page(), "nothing is on offer at first")
            dock.wait_for_text("tallyforgeVersion", f"Version {OLD}")
            look(dock)
            dock.wait_for_text("tallyforgeUpdateNotes", "Quicker.\nSturdier.")
            settings = home.settings()
            check(begin <= settings["last_update_check"] <= time.time(), "the time of the check is kept")
            asked = sim.state()["updates"]["requests"]
            check([request["path"] for request in asked] == [MANIFEST], f"{asked}")
            check(asked[0]["agent"] == f"Tallyforge-OBS/{OLD} (linux-{os.uname().machine})", f"{asked}")
            check_whole(home, offer, OLD, "before the installation")
            obs.request("StartRecord")
            wait_until(lambda: obs.request("GetRecordStatus")["outputActive"], what="a recording")
            install(dock, RESTART + RECORDING)
            page = dock.page()
            check("tallyforgeUpdateNow" not in page and "tallyforgeUpdateNotes" not in page,
                  "the banner asks for nothing but the restart")
            check(not page["tallyforgeCheckForUpdates"]["enabled"], "nor can more be asked for")
            obs.request("StopRecord")
            wait_until(lambda: not obs.request("GetRecordStatus")["outputActive"], what="its end")
            obs.wait_for_log(f"plugin {NEW} installed; takes effect on the next OBS start")
            check_whole(home, offer, NEW, "after the installation")
            obs.wait_for_status(CLOUD)
        check_clean(home)
        with opened(stage, home, is_open=True) as (obs, dock):
            obs.wait_for_log(f"loading plugin {NEW}")
            obs.wait_for_status(CLOUD)
            dock.wait_for_text("tallyforgeVersion", f"Version {NEW}")
            dock.click("tallyforgeCheckForUpdates")
            dock.wait_for_text("tallyforgeUpdateStatus", has(f"Tallyforge {NEW} is up to date. Checked "))
            check("tallyforgeUpdateBanner" not in dock.page(), "nothing is on offer any more")
            check(home.settings().keys() == settings.keys() and home.settings()["server_port"] == 9055,
                  "the settings are kept")
        check_whole(home, offer, NEW, "after the second run")
        check_clean(home)


def update_refused(stage):
    offer = Offer(stage)
    with offer.venue(stage) as sim:
        home = updatable(stage)
        with opened(stage, home) as (_, dock):
            sim.fault("updates", "wrong-hash", path=MANIFEST)
            install(dock, f"The update to version {NEW} did not finish.")
            dock.wait_for_text("tallyforgeUpdateStatus", DAMAGED)
            check_whole(home, offer, OLD, "after a damaged package")
        sim.clear("updates")
        plugin_of(home).chmod(0o555)
        # In a user namespace without a mapping root is nobody in particular, and rights count.
        with opened(stage, home, is_open=True, wrapper=("unshare", "--user")) as (_, dock):
            look(dock)
            dock.wait_for("tallyforgeOpenDownloadPage")
            check(not dock.widget("tallyforgeUpdateNow"), "where it may not be changed it can't be asked for")
        plugin_of(home).chmod(0o755)
        with opened(stage, home, is_open=True) as (_, dock):
            install(dock)
        check_whole(home, offer, NEW, "after all")


def meet(sim, home, dock, sign):
    """Starts the installation and returns once this lies in the staging folder."""
    if sign == DOWNLOADING:
        sim.fault("updates", "stall", path=PACKAGE)
    look(dock)
    dock.click("tallyforgeUpdateNow")
    if sign == DOWNLOADING:
        wait_until(lambda: sim.state()["updates"]["hanging"], what="half a package")
    deadline = time.monotonic() + 30
    while not (home.module_config / "update" / sign).exists():   # without a pause: some of it is soon gone
        if time.monotonic() > deadline:
            raise AssertionError(f"{sign} never came")


def check_next_start(stage, home, offer, what):
    """Whatever has happened, a whole plug-in starts and can be brought up to date."""
    with opened(stage, home, is_open=True) as (obs, dock):
        version = obs.wait_for_log(r"loading plugin ([\d.]+)")[1]
        obs.wait_for_status(CLOUD)
        check_whole(home, offer, version, what)
        if version == OLD:
            install(dock)
    check_whole(home, offer, NEW, f"{what}, then installed")
    print(f"{what}: {version} was left")


def end_on_the_way(stage, run, end):
    offer = Offer(stage, FILLER_BYTES)
    with offer.venue(stage) as sim:
        for sign in (DOWNLOADING, "extracted", f"extracted/{MODULE}/data/filler", "previous"):
            home = updatable(stage)
            with opened(stage, home, run=run) as (obs, dock):
                meet(sim, home, dock, sign)
                end(obs)
            sim.clear("updates")
            check_next_start(stage, home, offer, f"ended at {sign}")


def update_killed(stage):
    def kill(obs):
        obs.process.kill()
        obs.process.wait()
    end_on_the_way(stage, stage.session, kill)


def update_closed(stage):
    end_on_the_way(stage, stage.obs, lambda obs: obs.stop())
