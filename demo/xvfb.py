# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A virtual screen with a window manager, and pictures of it."""

import os
import subprocess
import tempfile

SIZE = "1440x900"
# Programs fill the screen, dialogs do not.
OPENBOX = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <applications><application type="normal"><maximized>yes</maximized></application></applications>
</openbox_config>
"""


class Xvfb:
    """Use as a context; env() is what a program needs to draw on the screen."""

    def __init__(self, size=SIZE):
        self._size = size

    def __enter__(self):
        read, write = os.pipe()
        # The server picks a free number by itself and writes it when it is ready.
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", self._size + "x24", "-nolisten", "tcp",
             "-r"],   # no key repeats itself when a busy computer lets go of it late
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        if not number:
            self._server.wait()
            raise RuntimeError("Xvfb did not start.")
        self.display = ":" + number
        self._settings = tempfile.NamedTemporaryFile("w", suffix=".xml")
        self._settings.write(OPENBOX)
        self._settings.flush()
        self._manager = subprocess.Popen(["openbox", "--config-file", self._settings.name],
                                         env=os.environ | self.env(), stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        return self

    def env(self):
        return {"DISPLAY": self.display}

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", str(path)], env=os.environ | self.env(),
                       check=True)

    def xdotool(self, *words):
        """Uses the mouse and the keyboard, or looks for windows; returns the words of its answer."""
        return subprocess.run(["xdotool", *map(str, words)], env=os.environ | self.env(), text=True,
                              stdout=subprocess.PIPE).stdout.split()

    def __exit__(self, *_):
        for process in (self._manager, self._server):
            process.terminate()
            process.wait(timeout=10)
        self._settings.close()
