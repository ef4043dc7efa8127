# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The demo's scene: a score strip over a court, in OBS's own sources and the plug-in's texts."""

import subprocess
from dataclasses import dataclass

from obs_home import CANVAS

LIVE, PLAIN = "tallyforge_text", "text_ft2_source_v2"
CENTRED = {"alignment": 0}


def colour(rgb):
    """OBS keeps colours as alpha, blue, green, red."""
    red, green, blue = bytes.fromhex(rgb)
    return 0xFF000000 | blue << 16 | green << 8 | red


def font(size, style="Bold"):
    return {"face": "DejaVu Sans", "style": style, "size": size, "flags": int(style == "Bold")}


@dataclass(frozen=True)
class Text:
    """A text of the strip; where its template names no field it is OBS's plain text."""
    name: str
    template: str
    x: int
    y: int
    size: int
    rgb: str = "ffffff"

    @property
    def is_live(self):
        return "{" in self.template

    def look(self):
        return {"font": font(self.size), "color1": colour(self.rgb), "color2": colour(self.rgb)}


BLOCKS = [   # name, colour, x, y, width, height
    ("Strip", "10161f", 140, 548, 1000, 104),
    ("Home colour", "1d5fbf", 140, 548, 300, 104),
    ("Away colour", "b3372f", 840, 548, 300, 104),
    ("Clock plate", "1b2532", 558, 548, 164, 104),
    ("Strip edge", "e9b44c", 140, 652, 1000, 6),
]
TEXTS = [
    Text("Home name", "HARBOR", 290, 586, 40),
    Text("Away name", "NORTHSIDE", 990, 586, 40),
    Text("Home fouls", "FOULS {home_fouls}", 290, 628, 20, "cfe0f7"),
    Text("Away fouls", "FOULS {away_fouls}", 990, 628, 20, "f7d8d5"),
    Text("Home score", "{home_score}", 499, 592, 64),
    Text("Away score", "{away_score}", 781, 592, 64),
    Text("Period and clock", "{period} · {clock}", 640, 596, 32, "e9b44c"),
]


def draw_court(path):
    """A quiet backdrop, so that the strip stands over something like a camera's picture."""
    width, height = CANVAS
    subprocess.run(
        ["convert", "-size", f"{width}x{height}", "radial-gradient:#c98d4f-#5b3417",
         "-fill", "none", "-stroke", "#ffffffa0", "-strokewidth", "5", "-draw",
         "rectangle 60,50 1220,690 line 640,50 640,690 circle 640,300 640,210 "
         "rectangle 60,200 270,400 rectangle 1010,200 1220,400 "
         "arc 190,220 350,380 -90,90 arc 930,220 1090,380 90,270", str(path)], check=True)


def build(obs, scene, backdrop):
    """Fills an empty scene."""
    items = [obs.create_input(scene, "Court", "image_source", {"file": str(backdrop)})]
    for name, rgb, x, y, width, height in BLOCKS:
        items.append(obs.create_input(scene, name, "color_source_v3", {
            "color": colour(rgb), "width": width, "height": height}, (x, y)))
    for text in TEXTS:
        kind, key = (LIVE, "template") if text.is_live else (PLAIN, "text")
        items.append(obs.create_input(scene, text.name, kind, text.look() | {key: text.template},
                                      (text.x, text.y), **CENTRED))
    for item in items:
        obs.lock(scene, item)


class Reference:
    """A plain text of OBS's own beside each live one, in its place but hidden."""

    def __init__(self, obs, scene):
        self._obs = obs
        self._scene = scene
        self._texts = [text for text in TEXTS if text.is_live]
        for text in self._texts:
            item = obs.create_input(scene, "Plain " + text.name, PLAIN, text.look(),
                                    (text.x, text.y), shown=False, **CENTRED)
            obs.lock(scene, item)
        listed = obs.request("GetSceneItemList", sceneName=scene)["sceneItems"]
        self._items = {item["sourceName"]: item["sceneItemId"] for item in listed}

    def remove(self):
        for text in self._texts:
            self._obs.request("RemoveInput", inputName="Plain " + text.name)

    def set(self, fields):
        for text in self._texts:
            self._obs.set_text("Plain " + text.name, text.template.format_map(fields))

    def wait(self):
        """Waits until each live text looks like its plain one."""
        for text in self._texts:
            self._obs.wait_for_picture(text.name, "Plain " + text.name)

    def picture(self):
        """The scene with the plain texts in place of the live ones."""
        self._swap(True)
        picture = self._obs.picture(self._scene)
        self._swap(False)
        return picture

    def _swap(self, plain):
        for text in self._texts:
            for name, shown in ((text.name, not plain), ("Plain " + text.name, plain)):
                self._obs.request("SetSceneItemEnabled", sceneName=self._scene,
                                  sceneItemId=self._items[name], sceneItemEnabled=shown)
