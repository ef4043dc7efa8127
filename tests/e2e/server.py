# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for other programs that speak to the plug-in in a real OBS."""

import json
import socket
import subprocess
import sys

from simulator import REPOSITORY
from stage import Score, check

PORT = 9001


def ask(*arguments):
    """What the example program prints: it is one that a user would start."""
    script = REPOSITORY / "docs/examples/ask.py"
    return subprocess.run([sys.executable, str(script), *arguments], timeout=30, check=True,
                          stdout=subprocess.PIPE, text=True).stdout


def used(stage):
    """Another program moves OBS between two devices and back; picture and readers follow."""
    routes = [("TF-1002", "Live from Pool over your network"), ("TF-1001", "Live from TF-1001"),
              ("TF-1002", "Live from Pool over your network")]
    with stage.venue("TF-1001=Main gym", "TF-1002=Pool@127.0.0.2") as sim:
        home = stage.home({"selected_device": "TF-1001", "server_enabled": True,
                           "routes": {"TF-1002": "lan"}, "lan": {"TF-1002": sim.lan_entry("TF-1002")}})
        with stage.obs(home) as obs:
            obs.wait_for_status("Live from TF-1001")
            check(ask() == "TF-1001\tMain gym (TF-1001)\nTF-1002\tPool (TF-1002)\n", "the devices")
            score = Score(obs)
            with socket.create_connection(("127.0.0.1", PORT), timeout=30) as reader:
                lines = map(json.loads, reader.makefile(encoding="utf-8"))
                for number, (device, status) in enumerate(routes):
                    ask(device)
                    obs.wait_for_status(status)
                    check(home.settings()["selected_device"] == device, "the choice is stored")
                    other = next(name for name in sim.devices if name != device)
                    sim.set(other, {"home_score": 900 + number})
                    for value in (10 + number, 40 + number):
                        sim.set(device, {"home_score": value})
                        score.wait(sim.device(device)["fields"])
                        told = next(line["fields"]["home_score"] for line in lines
                                    if line["fields"].get("home_score")
                                    in (str(value), str(900 + number)))
                        check(told == str(value), "the other device is not heard any more")
                reader.sendall(b"status\n")
                status = next(line for line in lines if "ok" in line)
                check(status["device"] == "TF-1002" and status["live"], f"the status: {status}")
