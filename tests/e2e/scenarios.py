# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold with the plug-in in a real OBS. Each function is a test of ctest's."""

import re
import subprocess
import time

from obs_session import wait_until
from stage import FONT, LIVE, Score, check, flowing
from stopwatch import Stopwatch

CLOUD = "Live from TF-1001"
LAN = "Live from Main gym over your network"
UNREACHABLE = "Could not reach Tallyforge. Check your internet connection."
LOST = re.compile(r"Could not reach the device on your network \(.+\)\.")
REJECTED = "The device rejected the connection. Re-run device setup to refresh its access."

PORTAL_FAULTS = [   # what the portal does, and the status line that must tell it
    ({"kind": "refuse"}, UNREACHABLE),
    ({"kind": "cut"}, "Tallyforge returned an error (200)."),
    ({"kind": "status", "status": 500}, "The service had an internal problem."),
    ({"kind": "status", "status": 502},
     "The Tallyforge service could not reach the live data feed. Try again shortly."),
]
BAD_SETTINGS = [
    '{"selected_device": "TF-10',
    '[{"selected_device": "TF-1002"}]',
    '{"selected_device": 7, "routes": "lan", "lan": [{"TF-1001": 1}], "server_port": {}}',
]


def cloud(stage):
    with stage.venue() as sim:
        home = stage.home()
        with stage.obs(home) as obs:
            obs.wait_for_status(CLOUD)
            check(home.settings()["selected_device"] == "TF-1001", "the only device is stored")
            score = Score(obs)
            score.follows(sim, home_score=3)
            for number, (fault, status) in enumerate(PORTAL_FAULTS):
                sim.fault("portal", **fault)
                obs.wait_for_status(status)
                sim.clear()
                score.follows(sim, home_score=10 + number)
                obs.wait_for_status(CLOUD)
            sim.fault("portal", "hang")
            wait_until(lambda: sim.state()["portal"]["hanging"], what="a request to hang")
            sim.clear()
            score.follows(sim, away_score=20)
            sim.fault("device", "pending")
            obs.wait_for_status("TF-1001 has not sent any scoreboard data yet.")
            sim.fault("device", "offline")
            obs.wait_for_status("TF-1001 is offline. Showing its last scores.")
            score.follows(sim, away_score=21)
            sim.clear()
            obs.wait_for_status(CLOUD)
            sim.fault("device", "gone")
            obs.wait_for_status("That device is not on this account.")
            sim.clear()
            polls = sim.polls("TF-1001")
            time.sleep(1.2)   # more than a poll: there is nothing to wait for
            check(sim.polls("TF-1001") == polls, "polling has ended")
        with stage.obs(home) as obs:
            obs.wait_for_status(CLOUD)
            sim.revoke_session()
            obs.wait_for_status("You have been signed out. Sign in again.")
        with stage.obs(home) as obs:
            wait_until(lambda: not (home.module_config / "session.json").exists(),
                       what="the refused sign-in to be forgotten")
        check(obs.statuses() == [], "nothing is followed without a sign-in")


def lan(stage):
    with stage.venue() as sim:
        with stage.obs(stage.lan_home()) as obs:
            obs.wait_for_status(LAN)
            score = Score(obs)
            score.follows(sim, home_score=3)
            sim.fault("feed", "away")
            obs.wait_for_status(LOST)
            sim.clear()
            obs.wait_for_status(LAN)
            score.follows(sim, home_score=4)
            for number, kind in enumerate(("split", "join", "garbage")):
                sim.fault("feed", kind)
                score.follows(sim, home_score=10 + number)
                check(obs.statuses()[-1] == LAN, f"{kind} lines do no harm")
                sim.clear()
            sim.fault("feed", "freeze")
            before = obs.picture(score.live)
            fields = sim.device("TF-1001")["fields"] | {"home_score": 20}
            sim.set("TF-1001", {"home_score": 20})
            check(obs.picture(score.live).same_as(before), "a silent device keeps its scores")
            sim.clear()
            score.wait(fields)
            sim.fault("feed", "late-auth-fail")
            obs.wait_for_status("The device rejected the connection.")
            sim.clear()
            obs.wait_for_status(LAN)
            sim.fault("feed", "reject")
            sim.fault("feed", "reset")
            obs.wait_for_status(REJECTED)
            sim.clear()
            connects = sim.device("TF-1001")["feed_connects"]
            time.sleep(1.2)   # more than the first back-off: there is nothing to wait for
            check(sim.device("TF-1001")["feed_connects"] == connects, "it does not try again")
        check(sim.polls("TF-1001") == 0, "the portal was not asked for scores")
        with stage.obs(stage.lan_home(token="of-an-earlier-pairing")) as obs:
            obs.wait_for_status(REJECTED)


def vanished(stage):
    """A device that loses its power says no goodbye; only TCP's keep-alive finds out."""
    def address(verb):
        return subprocess.run(["ip", "addr", verb, "10.9.9.9/32", "dev", "lo"],
                              capture_output=True).returncode == 0
    if not address("add"):
        return "adding a network address is not allowed here"
    with stage.venue("TF-1001=Main gym@10.9.9.9") as sim, stage.obs(stage.lan_home()) as obs:
        obs.wait_for_status(LAN)
        address("del")
        watch = Stopwatch()
        obs.wait_for_status(LOST)
        check(watch.own_seconds() < 14, "the loss is reported in about 11 seconds")
        address("add")
        obs.wait_for_status(LAN)
        Score(obs).follows(sim, home_score=3)
    return None


def choice(stage):
    with stage.venue("TF-1001=Main gym", "TF-1002=Pool") as sim:
        with stage.obs() as obs:
            wait_until(lambda: "/api/graphics/outputs" in sim.state()["portal"]["by_path"])
            time.sleep(0.3)   # for replies to arrive that must lead to nothing
        check(obs.statuses() == [], "no device of two is followed without a choice")
        check(not sim.polls("TF-1001") and not sim.polls("TF-1002"), "nor asked for")
        with stage.obs(stage.home({"selected_device": "TF-1002", "later": [1]})) as obs:
            obs.wait_for_status("Live from TF-1002")
            check(obs.home.settings()["later"] == [1], "unknown settings survive")
    with stage.venue() as sim:
        for text in BAD_SETTINGS:
            with stage.obs(stage.home(text, 0o644)) as obs:
                obs.wait_for_status(CLOUD)
                check(obs.home.settings()["selected_device"] == "TF-1001", "the file is whole")


def style(stage):
    looks = [{"color1": 0xFF2040F0, "color2": 0xFFF0A010}, {"outline": True, "drop_shadow": True},
             {"font": FONT | {"face": "DejaVu Serif", "style": "Book", "size": 61, "flags": 0}},
             {"antialiasing": False, "custom_width": 90, "word_wrap": True}]
    with stage.venue() as sim:
        home = stage.lan_home()
        sim.set("TF-1001", {"home_score": 11, "away_score": 22})
        fields = sim.device("TF-1001")["fields"]
        with stage.obs(home) as obs:
            obs.wait_for_status(LAN)
            pictures = [Score(obs, f"Look {number}", **look).wait(fields).png
                        for number, look in enumerate(looks)]
            check(len(set(pictures)) == len(looks), "each setting shows")
        with stage.obs(home) as obs:
            obs.wait_for_status(LAN)
            scores = [Score(obs, f"Look {number}") for number in range(len(looks))]
            check([score.wait(fields).png for score in scores] == pictures,
                  "the settings survive a restart of OBS")
            for score in scores:
                score.follows(sim, home_score=fields["home_score"] + 1 + scores.index(score))


def many(stage):
    """Fifty texts follow one change, and come and go while scores stream in."""
    with stage.venue() as sim:
        home = stage.lan_home()
        home.write_collection("Other", "Elsewhere")
        with stage.obs(home) as obs:
            obs.wait_for_status(LAN)
            names = [f"Text {number}" for number in range(50)]
            items = {name: obs.create_input(
                "Scene", name, LIVE, {"font": FONT, "template": name + ": {home_score}"})
                for name in names}
            score = Score(obs, "Reference", "Text 0: {home_score}")
            score.follows(sim, home_score=5)
            with flowing(sim):
                for name in names[40:]:
                    obs.request("RemoveInput", inputName=name)
                for name in names[:5]:
                    obs.request("DuplicateSceneItem", sceneName="Scene", sceneItemId=items[name])
                    obs.create_input("Scene", name + " twin", LIVE, {"font": FONT})
                for name in names[:10] * 2:
                    obs.request("SetSceneItemEnabled", sceneName="Scene", sceneItemEnabled=False,
                                sceneItemId=items[name])
                    obs.request("SetSceneItemEnabled", sceneName="Scene", sceneItemEnabled=True,
                                sceneItemId=items[name])
                for collection in ("Other", "Untitled"):
                    obs.request("SetCurrentSceneCollection", sceneCollectionName=collection)
            obs.request("SetSceneItemEnabled", sceneName="Scene", sceneItemEnabled=False,
                        sceneItemId=items[names[10]])
            sim.set("TF-1001", {"home_score": 777, "away_score": 3})
            expected = {name: f"{name}: 777" for name in names[:40]}
            expected |= {name + " twin": "777 - 3" for name in names[:5]}
            for name, text in expected.items():
                obs.set_text(score.plain, text)
                obs.wait_for_picture(name, score.plain)
            check(obs.statuses()[-1] == LAN, "the feed is still live")


def closing(stage):
    """OBS's end is bounded and clean whatever is under way; each run checks that by itself."""
    with stage.venue() as sim:
        for path in ("/auth/me", "/devices", "/devices/TF-1001/state"):
            sim.fault("portal", "hang", path=path)
            with stage.obs():
                wait_until(lambda: sim.state()["portal"]["hanging"], what="a request to hang")
            sim.clear()
        for kind in ("hang-handshake", "silent"):
            sim.fault("feed", kind)
            connects = sim.device("TF-1001")["feed_connects"]
            with stage.obs(stage.lan_home()) as obs:
                wait_until(lambda: sim.device("TF-1001")["feed_connects"] > connects,
                           what="a connection")
                check(obs.statuses() == ["Connecting to Main gym on your network…"], "connecting")
            sim.clear()


def untrusted(stage):
    """A portal whose certificate nobody trusts gets no request, and so no cookie."""
    with stage.venue() as sim:
        home = stage.home()
        with stage.obs(home) as obs:
            obs.wait_for_status(CLOUD)
            sim.restart(trusted=False)
            obs.wait_for_status(UNREACHABLE)
            time.sleep(2.2)   # two polls: there is nothing to wait for
            check(obs.statuses()[-1] == UNREACHABLE, "it stays out of reach")
            check(sim.state()["portal"]["requests"] == 0, "no request reaches it")
            sim.restart(trusted=True)
            obs.wait_for_status(CLOUD, 20)
        sim.restart(trusted=False)
        with stage.obs(home) as obs:
            pass
        check(obs.statuses() == [], "a sign-in that could not be restored is no news")
        check(sim.state()["portal"]["requests"] == 0, "no request reaches it at the start either")
        check((home.module_config / "session.json").exists(), "the sign-in is kept for better days")
