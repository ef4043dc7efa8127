# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for graphics in a real OBS, with a stand-in for its browser source."""

import json
import signal

from obs_session import PATIENCE, wait_until
from stage import check
from stopwatch import Stopwatch

LIST = "/api/graphics/outputs"
STORED = {"output_id": "old", "output_name": "Last season", "url": "https://localhost:8443/old",
          "width": 1280, "height": 720}
BUTTON = (136, 341)   # of the properties dialog, in its window
DIALOG = "search", "--onlyvisible", "--name", "^Properties for"


def add(obs, settings, name="Bug"):
    return obs.request("CreateInput", sceneName="Scene", inputName=name,
                       inputKind="tallyforge_graphics", inputSettings=settings)["sceneItemId"]


def listed(obs):
    items = obs.request("GetInputPropertiesListPropertyItems", inputName="Bug",
                        propertyName="output_id")["propertyItems"]
    return [item["itemName"] for item in items]


def record(home, page=1):
    """What has reached the browser source so far."""
    path = home.folder / "browser.jsonl"
    lines = path.read_text().splitlines() if path.exists() else []
    return [line for line in map(json.loads, lines) if line["page"] == page]


def events(home):
    return [line["event"] for line in record(home) if line["event"] != "update"]


def wait_for_list(sim):
    wait_until(lambda: sim.state()["portal"]["by_path"].get(LIST), what="the list to be asked for")


def page(stage):
    """The chosen page is in the picture, learns whether it is seen, and outlasts all sign-ins."""
    with stage.venue("TF-1001=Main gym", "TF-1002=Pool") as sim:
        home = stage.home()
        with stage.obs(home) as obs:
            wait_until(lambda: len(sim.devices) == 2 and sim.state()["portal"]["by_path"].get(LIST))
            item = add(obs, {"output_id": "scorebug-TF-1002"})
            check(wait_until(lambda: listed(obs)[1:]) == ["Score bug Pool"], "both are listed")
            settings = obs.request("GetInputSettings", inputName="Bug")["inputSettings"]
            obs.create_input("Scene", "Plain", "browser_source",
                             {"url": settings["url"], "width": 1920, "height": 1080}, shown=False)
            check(obs.wait_for_picture("Bug", "Plain").size == (1920, 1080), "the page's size")
            obs.request("SetInputSettings", inputName="Bug", inputSettings={"width": 640})
            wait_until(lambda: obs.picture("Bug").size == (640, 1080), what="the new width")
            listed(obs)
            check(obs.picture("Bug").size == (640, 1080), "the user's width stays")
            obs.request("RemoveInput", inputName="Plain")   # because its record would be mixed up below

            for enabled in (False, True):
                obs.request("SetSceneItemEnabled", sceneName="Scene", sceneItemId=item,
                            sceneItemEnabled=enabled)
                wait_until(lambda: record(home)[-1]["active"] == enabled, what="the page to know")
            for enabled in (True, False):
                obs.request("SetStudioModeEnabled", studioModeEnabled=enabled)
            seen = ["create", "show", "activate", "hide", "deactivate", "show", "activate"]
            check(events(home) == seen, f"what the page was told: {events(home)}")
            sim.revoke_session()
        (home.folder / "browser.jsonl").unlink()
        with stage.obs(home) as obs:   # signed out
            wait_until(lambda: not (home.module_config / "session.json").exists(), what="the end")
            check(listed(obs) == ["Score bug Pool"], "the chosen one is still in the list")
            wait_until(lambda: record(home)[-1]["settings"].get("url") == settings["url"],
                       what="the page that stays")
            obs.request("RemoveInput", inputName="Bug")
            wait_until(lambda: events(home)[-1] == "destroy", what="the page to go")
            end = record(home)[-1]
            check(not end["showing"] and not end["active"], "it is let go of as unseen")


def properties(stage):
    """What the list offers in each state; the stored page is shown in all of them."""
    states = [("no outputs", lambda sim: sim.fault("device", "gone"), ["Last season"]),
              ("failing", lambda sim: sim.fault("portal", "status", path=LIST), ["Last season"]),
              ("gone", lambda sim: sim.clear(), ["Last season"] + ["Score bug TF-1001"])]
    with stage.venue("TF-1001") as sim:
        for name, prepare, expected in states:
            prepare(sim)
            home = stage.home()
            with stage.obs(home) as obs:
                wait_for_list(sim)
                add(obs, STORED)
                wait_until(lambda: listed(obs) == expected, what=f"the list when {name}")
                wait_until(lambda: record(home)[-1]["settings"].get("url") == STORED["url"],
                           what="the page")
            sim.restart(trusted=True)


def press(stage, sim, obs):
    """Opens the properties and presses the button while the portal hangs; returns a watch that runs since."""
    add(obs, STORED)
    obs.request("OpenInputPropertiesDialog", inputName="Bug")
    window = wait_until(lambda: stage.screen.xdotool(*DIALOG), what="the properties")[0]
    sim.fault("portal", "hang", path=LIST)

    def hangs():   # the dialog may still be about to be laid out
        stage.screen.xdotool("mousemove", "--window", window, *BUTTON, "click", 1)
        return sim.state()["portal"]["hanging"]
    wait_until(hangs, what="the request to hang")
    return window, Stopwatch()


def refresh(stage):
    """The button with a portal that hangs: OBS goes on, and whatever is closed then closes."""
    def dialogs():
        return stage.screen.xdotool(*DIALOG)

    with stage.venue() as sim:
        with stage.obs() as obs:
            wait_for_list(sim)
            asked = sim.state()["portal"]["by_path"][LIST]
            window, watch = press(stage, sim, obs)
            obs.request("SetCurrentProgramScene", sceneName="Scene")
            check(watch.own_seconds() < 2, "remote control is served meanwhile")
            stage.screen.xdotool("click", 1)
            stage.screen.xdotool("key", "--window", window, "Escape")
            wait_until(lambda: not dialogs(), what="the dialog to take the key")
            check(6 < watch.seconds() and watch.own_seconds() < 9, "OBS answers after 8 seconds")
            check(sim.state()["portal"]["by_path"][LIST] == asked + 1, "one press, one request")
            check(listed(obs) == ["Last season", "Score bug Main gym"], "the list is the old one")
            sim.fault("device", "gone")
            sim.clear("portal")
            wait_until(lambda: listed(obs) == ["Last season"], what="the late list")
            settings = obs.request("GetInputSettings", inputName="Bug")["inputSettings"]
            check(settings == STORED, "the late list changes no settings")
            sim.clear()
        with stage.obs() as obs:
            wait_for_list(sim)
            _, watch = press(stage, sim, obs)
            obs.request("RemoveInput", inputName="Bug")
            wait_until(lambda: not dialogs(), what="the dialog to close")
            check(watch.own_seconds() < 4, "a dialog that is closed ends the wait")
            sim.clear()
        with stage.obs() as obs:
            wait_for_list(sim)
            press(stage, sim, obs)
            obs.process.send_signal(signal.SIGINT)
            obs.wait_for_end(PATIENCE)
