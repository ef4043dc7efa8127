# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The ground of every scenario, and the checks at the end of each run of OBS."""

import contextlib
import re
import stat
import threading

import desktop
from obs_home import ObsHome
from obs_session import PATIENCE, ObsSession, wait_until
from simulator import Simulator

FONT = {"face": "DejaVu Sans", "style": "Bold", "size": 48, "flags": 1}
LIVE, PLAIN = "tallyforge_text", "text_ft2_source_v2"
CLOSING_SECONDS = 2
FRAME_RATE = 20   # two OBS at once, drawn by the processor, leave little of it for anything else


def check(truth, what):
    if not truth:
        raise AssertionError(what)


class Stage:
    def __init__(self, built, folder, screen):
        self.built = built   # with the folders plugin, browser, finder and next
        self._folder = folder
        self.screen = screen
        self._count = 0
        self.runs = 0
        self.sim = None

    def new_folder(self, name):
        self._count += 1
        return self._folder / f"{name}-{self._count}"

    @contextlib.contextmanager
    def venue(self, *devices, options=()):
        with Simulator(self.new_folder("sim"), devices or ["TF-1001=Main gym"],
                       "--manual", *options) as self.sim:
            yield self.sim

    def home(self, settings=None, mode=0o600, **options):
        """A fresh home with a sign-in that is still good."""
        home = ObsHome(self.new_folder("home"), frame_rate=FRAME_RATE, **options)
        home.install(self.built.plugin)
        home.install(self.built.browser, "browser-standin")
        home.write_session(self.sim.cookie)
        home.write_settings(settings, mode)
        return home

    def lan_home(self, **changes):
        ids = list(self.sim.devices)
        return self.home({"selected_device": ids[0], "routes": {ids[0]: "lan"},
                          "lan": {ids[0]: self.sim.lan_entry(ids[0]) | changes}})

    def session(self, home, wrapper=(), options=()):
        """A run of OBS of which nothing is demanded at its end. Its Bluetooth is the venue's."""
        self.runs += 1
        env = self.screen.env() | {"BROWSER_STANDIN_RECORD": str(home.folder / "browser.jsonl")}
        env |= desktop.env(self.built.finder, home.folder / "finder") | self.sim.env()
        return ObsSession(home, env, wrapper, options)

    @contextlib.contextmanager
    def obs(self, home=None, wrapper=(), options=(), warnings=()):
        """A run of OBS that must end well. Its log holds just these warnings of the plug-in's."""
        home = home or self.home()
        with self.session(home, wrapper, options) as session:
            yield session
        self._check_end(session, home, warnings)

    def _check_end(self, session, home, warnings):
        ended = session.ended
        check(ended.exit_code == 0, f"OBS ended with code {ended.exit_code}")
        check(ended.leaks == 0, f"OBS reported {ended.leaks} memory leaks")
        check(ended.complaints == ["warning: [tallyforge] " + warning for warning in warnings],
              f"OBS's log holds {ended.complaints}")
        check(ended.seconds < CLOSING_SECONDS, f"OBS took {ended.seconds:.2f} s to end")
        check(session.log().count("[tallyforge] plugin unloaded") == 1, "the plug-in unloaded")
        violations = self.sim.state()["violations"]
        check(not violations, f"the simulator saw {violations}")
        written = session.log() + home.written_logs()
        for number, secret in enumerate(self.sim.secrets()):
            check(not re.search(rf"(?<![\w.]){re.escape(secret)}(?!\w)", written),
                  f"the simulator's secret {number} stands in OBS's log")
        for file in home.module_config.glob("*.json"):
            check(stat.S_IMODE(file.stat().st_mode) == 0o600, f"{file.name} is not private")


class Score:
    """A live text and, under it, a plain one that shows the expected text."""

    def __init__(self, obs, name="Score", template="{home_score} - {away_score}", **look):
        self._obs = obs
        self.live, self.plain, self._template = name, name + " expected", template
        look = {"font": FONT} | look
        if name not in [i["inputName"] for i in obs.request("GetInputList")["inputs"]]:
            obs.create_input("Scene", self.live, LIVE, look | {"template": template})
            obs.create_input("Scene", self.plain, PLAIN, look, (0, 200))

    def wait(self, fields, timeout=PATIENCE):
        self._obs.set_text(self.plain, self._template.format_map(fields))
        picture = self._obs.wait_for_picture(self.live, self.plain, timeout)
        check(not picture.is_blank, f"{self.live} is blank")
        return picture

    def follows(self, sim, timeout=PATIENCE, **fields):
        """Changes the score at the venue; it must come to stand in the picture, to the pixel."""
        device = next(iter(sim.devices))
        before = self._obs.picture(self.live)
        sim.set(device, fields)
        after = self.wait(sim.device(device)["fields"], timeout)
        check(before is None or not before.same_as(after), f"{self.live} does not change")


@contextlib.contextmanager
def flowing(sim):
    """Scores keep coming at about a hundred a second meanwhile."""
    over = threading.Event()

    def flow():
        while not over.wait(0.01):
            sim.step()
    before = sim.state()["revision"]
    thread = threading.Thread(target=flow)
    thread.start()
    try:
        yield
    finally:
        wait_until(lambda: sim.state()["revision"] > before + 5, what="scores to flow")
        over.set()
        thread.join()
