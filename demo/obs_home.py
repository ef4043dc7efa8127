# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A private home folder in which OBS starts without questions, with the plug-in installed."""

import json
import shutil
from pathlib import Path

import obs_websocket

MODULE = "tallyforge-obs"
CANVAS = (1280, 720)

WEBSOCKET = {"first_load": False, "server_enabled": True, "auth_required": False,
             "alerts_enabled": False, "server_port": obs_websocket.PORT, "server_password": ""}


def _ini(**sections):
    lines = []
    for section, values in sections.items():
        lines += [f"[{section}]", *(f"{key}={value}" for key, value in values.items()), ""]
    return "\n".join(lines)


class ObsHome:
    """Each scene collection has a single scene: with two or more, OBS 32.2 by itself, without any
    plug-in of a user's, leaks memory or crashes at the end of about every third run."""

    def __init__(self, folder, scene="Scene", language="en-US", frame_rate=60):
        self.folder = Path(folder)
        self.output = self.folder / "obs-output.txt"   # what OBS prints, with the levels
        self.config = self.folder / ".config/obs-studio"
        self.module_config = self.config / "plugin_config" / MODULE
        self._write("global.ini", _ini(
            General={"InfoIncrement": 100, "EnableAutoUpdates": "false"},
            Locations={name: self.folder / ".config"
                       for name in ("Configuration", "SceneCollections", "Profiles")}))
        self._write("user.ini", _ini(
            General={"FirstRun": "true", "ConfirmOnExit": "false", "Language": language},
            Basic={key: "Untitled" for key in
                   ("Profile", "ProfileDir", "SceneCollection", "SceneCollectionFile")},
            BasicWindow={"SpacingHelpersEnabled": "false"}))
        self._write("basic/profiles/Untitled/basic.ini", _ini(
            General={"Name": "Untitled"},
            Video={"BaseCX": CANVAS[0], "BaseCY": CANVAS[1], "OutputCX": CANVAS[0],
                   "OutputCY": CANVAS[1], "FPSCommon": frame_rate}))
        self._write("plugin_config/obs-websocket/config.json", json.dumps(WEBSOCKET))
        self.write_collection("Untitled", scene)

    def _write(self, name, text, mode=0o644):
        path = self.config / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        path.chmod(mode)

    def write_collection(self, name, scene):
        """Makes a scene collection of one empty scene."""
        self._write(f"basic/scenes/{name}.json", json.dumps({
            "name": name, "current_scene": scene, "current_program_scene": scene,
            "scene_order": [{"name": scene}],
            "sources": [{"id": "scene", "name": scene, "settings": {}}]}))

    def choose_theme(self, theme):
        """Takes the id of one that OBS brings along, such as com.obsproject.Yami.Light."""
        with open(self.config / "user.ini", "a") as file:
            file.write(_ini(Appearance={"Theme": theme}))

    def install(self, plugin_folder, name=MODULE):
        """Copies a built plug-in folder to where OBS looks for a user's own."""
        shutil.copytree(plugin_folder, self.config / "plugins" / name, dirs_exist_ok=True)

    def write_settings(self, settings, mode=0o600):
        """Sets the plug-in's settings; a text stands in the file as it is, None means no file."""
        (self.module_config / "settings.json").unlink(missing_ok=True)
        if settings is not None:
            text = settings if isinstance(settings, str) else json.dumps(settings)
            self._write(f"plugin_config/{MODULE}/settings.json", text, mode)

    def write_session(self, cookie):
        """Leaves the sign-in of an earlier run of the plug-in."""
        entry = (f"tf_session={cookie}; secure; HttpOnly; expires=Fri, 31-Dec-2049 23:59:59 GMT; "
                 "domain=localhost; path=/")
        self._write(f"plugin_config/{MODULE}/session.json", json.dumps([entry]), 0o600)

    def settings(self):
        return json.loads((self.module_config / "settings.json").read_text())

    def written_logs(self):
        """Everything that OBS has written into its log folders."""
        return "".join(path.read_text(errors="replace")
                       for name in ("logs", "crashes", "profiler_data")
                       for path in self.config.glob(name + "/*.txt"))
