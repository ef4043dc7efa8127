# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A real OBS that a script starts, steers, watches and ends."""

import os
import re
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

from obs_websocket import ObsWebsocket
from stopwatch import Stopwatch

START_SECONDS = 60
LOADED = "info: Loaded scenes:"   # a client that comes earlier gets no answers
PATIENCE = 30   # seconds: a busy computer takes long, and a test that passes does not wait
STATUS = re.compile(r"\[tallyforge\] live data: (.*)")
LEAKS = re.compile(r"Number of memory leaks: (\d+)")
# OBS writes the level in front of each line; Qt's own complaints name the class they come from.
OURS = re.compile(r"^(warning|error): .*tallyforge|^(Q[A-Z]\w+|qt\.\w[\w.]*): ", re.IGNORECASE)


class Timeout(Exception):
    """A condition that was waited for did not come."""


def wait_until(condition, timeout=PATIENCE, what="a condition"):
    """Waits until the function returns something true, and returns that."""
    deadline = time.monotonic() + timeout
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise Timeout(f"Waited {timeout} seconds in vain for {what}.")
        time.sleep(0.02)


@dataclass(frozen=True)
class Ended:
    """How a run of OBS ended."""
    seconds: float      # from the request to the end of the process, without other programs' work
    exit_code: int
    leaks: int          # None when OBS did not come to count them
    complaints: list    # log lines of level warning or error that the plug-in is the cause of


class ObsSession:
    """Use as a context. ended is set once OBS has ended, which leaving the context sees to."""

    def __init__(self, home, env, wrapper=(), options=()):
        self.home = home
        self._wrapper = wrapper   # words of a command that becomes OBS
        self._options = options   # of OBS's command line
        self.ended = None
        self._env = os.environ | env | {
            "HOME": str(home.folder), "XDG_CONFIG_HOME": str(home.folder / ".config"),
            "XDG_RUNTIME_DIR": str(home.folder / "run"),
            "LIBGL_ALWAYS_SOFTWARE": "1", "LC_ALL": "C.UTF-8"}
        self._env["QT_QPA_PLATFORM"] = "xcb" if self._env.get("DISPLAY") else "wayland"
        self._log_file = home.output

    def __enter__(self):
        (self.home.folder / "run").mkdir(mode=0o700, exist_ok=True)
        with open(self._log_file, "wb") as log:
            self.process = subprocess.Popen(
                # Not --disable-missing-files-check: with it OBS leaks a block for each scene
                # collection that it loads.
                [*self._wrapper, "obs", "--multi", "--disable-shutdown-check", "--disable-updater",
                 *self._options],
                env=self._env, stdout=log, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
        try:
            self.control = wait_until(self._connect, START_SECONDS, "OBS to start")
        except BaseException:
            self._kill()
            raise
        self.request = self.control.request
        self.create_input = self.control.create_input
        self.lock = self.control.lock
        self.picture = self.control.picture
        return self

    def _connect(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"OBS ended with code {self.process.returncode} while it started.")
        return ObsWebsocket.connect_when_ready() if LOADED in self.log() else None

    def __exit__(self, kind, *_):
        if kind is None and self.ended is None:
            self.stop()
        self._kill()

    def _kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    # What it writes

    def log(self):
        return self._log_file.read_text(errors="replace")

    def wait_for_log(self, pattern, timeout=PATIENCE):
        return wait_until(lambda: re.search(pattern, self.log()), timeout, f"the log line {pattern}")

    def statuses(self):
        """All status lines of the live data so far, oldest first."""
        return STATUS.findall(self.log())

    def wait_for_status(self, text, timeout=PATIENCE):
        """Waits until this is the present status line; a regular expression may be given too."""
        def is_present():
            last = (self.statuses() or [""])[-1]
            return text.fullmatch(last) if isinstance(text, re.Pattern) else text == last
        try:
            return wait_until(is_present, timeout)
        except Timeout:
            raise Timeout(f"Waited {timeout} seconds in vain for the status {text!r}; "
                          f"there were {self.statuses()!r}.") from None

    def resident_kilobytes(self):
        status = Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1])

    # Pictures

    def wait_for_picture(self, source, expected, timeout=PATIENCE):
        """Waits until a source looks like another source or a picture, to the pixel."""
        def looks_alike():
            now = self.picture(source)
            wish = self.picture(expected) if isinstance(expected, str) else expected
            return now if now and wish and now.same_as(wish) else None
        return wait_until(looks_alike, timeout, f"{source} to look as expected")

    def set_text(self, source, text):
        """Gives one of OBS's own text sources a text and waits until it is drawn."""
        settings = self.request("GetInputSettings", inputName=source)["inputSettings"]
        if settings.get("text") == text:
            return
        old = self.picture(source)
        self.request("SetInputSettings", inputName=source, inputSettings={"text": text})

        def is_drawn():
            now = self.picture(source)
            return now and not (old and now.same_as(old))
        wait_until(is_drawn, what=f"{source} to be drawn")

    # The end

    def stop(self, timeout=PATIENCE):
        """Asks OBS to close, as a session manager would, and waits for the end."""
        self.control.close()   # obs-websocket can crash when OBS ends under its clients
        self.process.send_signal(signal.SIGINT)
        return self.wait_for_end(timeout)

    def wait_for_end(self, timeout=None):
        watch = Stopwatch()
        try:
            code = self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise Timeout(f"OBS did not end within {timeout} seconds.") from None
        seconds = watch.own_seconds()
        self.control.close()
        log = self.log()
        leaks = LEAKS.search(log)
        complaints = [line for line in log.splitlines() if OURS.search(line)]
        self.ended = Ended(seconds, code, int(leaks[1]) if leaks else None, complaints)
        return self.ended
