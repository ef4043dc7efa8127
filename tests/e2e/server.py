# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for other programs that speak to the plug-in in a real OBS."""

import contextlib
import json
import socket
import subprocess
import sys

from simulator import REPOSITORY
from stage import Score, check

PORT = 9001


EXAMPLES = REPOSITORY / "docs/examples"


def ask(*arguments):
    """What the example program prints: it is one that a user would start."""
    return subprocess.run([sys.executable, str(EXAMPLES / "ask.py"), *arguments], timeout=30, check=True,
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


def remote(stage):
    """The same through obs-websocket: the examples, each request as on the port, and late questions."""
    with stage.venue("TF-1001=Main gym", "TF-1002=Pool") as sim:
        home = stage.home({"selected_device": "TF-1001", "server_enabled": True})
        with stage.obs(home) as obs:
            obs.wait_for_status("Live from TF-1001")

            def vendor(op, **data):
                return obs.request("CallVendorRequest", vendorName="tallyforge", requestType=op,
                                   requestData=data)["responseData"]

            def port(op, **data):
                with socket.create_connection(("127.0.0.1", PORT), timeout=30) as server:
                    server.sendall(json.dumps({"op": op} | data).encode() + b"\n")
                    lines = map(json.loads, server.makefile(encoding="utf-8"))
                    first = next(lines)   # a snapshot, like the answer to "get"
                    return first if op == "get" else next(line for line in lines if "ok" in line)
            for op, data in (("status", {}), ("devices", {}), ("use", {"device": "TF-9"}), ("use", {})):
                check(vendor(op, **data) == port(op, **data), f"{op} {data}: {vendor(op, **data)}")
            with follower() as lines:
                next(lines)
                for device, score in (("TF-1002", 17), ("TF-1001", 18)):
                    sim.set(device, {"home_score": score, "away_score": 2})
                    choose = ["node", str(EXAMPLES / "obs_ask.mjs"), device]
                    subprocess.run(choose, timeout=30, check=True)
                    check(vendor("status")["device"] == device, "the choice shows at once")
                    check(f"{score} : 2\n" in lines, f"the score of {device} comes as an event")
                    check(vendor("get")["fields"] == port("get")["fields"], "the scores")


@contextlib.contextmanager
def follower():
    """The lines of the example that waits for events."""
    with subprocess.Popen([sys.executable, str(EXAMPLES / "obs_follow.py")], stdout=subprocess.PIPE,
                          text=True) as process:
        try:
            yield iter(process.stdout)
        finally:
            process.kill()
