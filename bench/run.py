#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Measures how fast a score reaches the picture and what the plug-in costs, in one table.

A missed aim stands in the table and is no failure; what could not be measured is one.
"""

import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(REPOSITORY / "demo"))

import carriers
import dock_cost
import fan_out
import held
import obs_cost
import picture_latency
import setup_cost
import update_download
import usb_frames
import usb_link
import websocket
from figures import Heading, Row, high, median, table
from obs_home import ObsHome
from simulator import NotInSandbox, Simulator
from xvfb import Xvfb

DEVICE, NICKNAME = "TF-1001", "Main gym"
BARE_DEVICE = "TF-1002"    # on a cable that the plug-in's code has no part in
LAN_PORT = 8080
INGEST_MICROSECONDS, HELD_MILLISECONDS = 30, 5


def say(text):
    print(text, file=sys.stderr, flush=True)


def measure_main_thread(program, folder, env):
    config = ObsHome(folder / "main-thread").module_config
    config.mkdir(parents=True)
    output = subprocess.run([str(program), str(config)], env=os.environ | env, check=True,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=60).stdout
    return main_thread_rows(json.loads(output))


def main_thread_rows(result):
    unchanged, ours, plain = result["unchanged"], result["many"]["ours"], result["many"]["plain"]

    def to_ms(values):
        return [value / 1000 for value in values]

    def graphics(costs):
        quiet = median(costs["quiet"])
        return to_ms([value - quiet for value in costs["changed"]])
    ingest, held = unchanged["ingest"], to_ms(ours["held"])
    return [
        Heading("What a change costs inside the process"),
        Row(f"ingest of {unchanged['fields']} unchanged fields", "us", ingest,
            f"< {INGEST_MICROSECONDS}", median(ingest) < INGEST_MICROSECONDS),
        Row("    signals that it fired", "", [unchanged["signals"]], "none",
            unchanged["signals"] == 0),
        Row("A change with 100 text sources: main thread held", "ms", held,
            f"< {HELD_MILLISECONDS} (95 %)", high(held) < HELD_MILLISECONDS),
        Row("    the graphics thread's frame takes longer by", "ms", graphics(ours)),
        Row("100 of OBS's own texts updated directly: main thread", "ms", to_ms(plain["held"])),
        Row("    the graphics thread's frame takes longer by", "ms", graphics(plain)),
    ]


def describe_machine(log):
    def found(pattern):
        match = re.search(pattern, log)
        return match[1] if match else "unknown"
    load = ", ".join(f"{value:.1f}" for value in os.getloadavg())
    return (f"{os.cpu_count()} cores ({found(r'CPU Name: (.*)')}), drawing on them by "
            f"{found(r'Loading up OpenGL on adapter (.*?) [(]')}; OBS {found(r'OBS ([0-9]\S*)')}, "
            f"Qt {found(r'Qt Version: (\S+)')}; load at the end {load}")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--only", default="", metavar="WORD",
                        help="measure only the parts whose names contain this")
    parser.add_argument("--build", type=Path, default=REPOSITORY / "build/bench",
                        help="folder in which the preset bench was built (%(default)s)")
    return parser.parse_args()


def measure_all(build, folder, only):
    """The table's rows, OBS's log, and what went wrong."""
    rows, faults, log = [], [], ""
    with Simulator(folder / "sim", [f"{DEVICE}={NICKNAME}", BARE_DEVICE], "--manual", "--usb",
                   DEVICE, "--usb", BARE_DEVICE, "--lan-port", str(LAN_PORT)) as simulator, \
            Xvfb() as screen:
        env = screen.env()

        def obs():
            nonlocal log
            found, log = obs_cost.measure(build / "plugins/tallyforge-obs", folder, simulator,
                                          DEVICE, env)
            return found
        parts = {
            "the way to the picture (about 3 minutes)": lambda: picture_latency.measure(
                build / "bench/bench-latency", folder, simulator, DEVICE, env),
            "costs inside the process": lambda: measure_main_thread(
                build / "bench/bench-main_thread", folder, env),
            "frames of a USB cable": lambda: usb_frames.measure(build / "bench/bench-usb_frames"),
            "a device on a USB cable (about 40 s)": lambda: usb_link.measure(
                build / "bench/bench-device", simulator, DEVICE),
            "the carriers of a session (about a minute)": lambda: carriers.measure(
                build / "bench/bench-device", simulator, DEVICE, BARE_DEVICE),
            "other programs over TCP (about 100 s)": lambda: fan_out.measure(
                build / "bench/bench-fan_out", folder),
            "other programs through obs-websocket (about 20 s)": lambda: websocket.measure(
                build / "plugins/tallyforge-obs", folder, simulator, DEVICE, env),
            "how long outsiders hold the main thread (about 40 s)": lambda: held.measure(
                build / "bench/bench-held", folder),
            "the download of an update": lambda: update_download.measure(
                build / "bench/bench-update_download", folder),
            "the dock (about 4 minutes)": lambda: dock_cost.measure(
                build, folder, simulator, DEVICE, screen),
            "the setup dialog (about 6 minutes)": lambda: setup_cost.measure(
                build, folder, simulator, DEVICE, screen),
            "costs in a real OBS (about 3 minutes)": obs,
        }
        for name, measure in parts.items():
            if only not in name:
                continue
            say(f"Measuring {name} ...")
            begin = time.monotonic()
            try:
                rows += measure()
            except Exception as error:   # the other parts are still worth having
                faults.append(f"{name}: {type(error).__name__}: {error}")
            say(f"  {time.monotonic() - begin:.0f} s")
    return rows, faults, log


def main():
    options = arguments()
    begin = time.monotonic()
    say("Load of the machine before: " + ", ".join(f"{value:.1f}" for value in os.getloadavg()))
    try:
        with tempfile.TemporaryDirectory(prefix="tallyforge-bench-") as folder:
            rows, faults, log = measure_all(options.build, Path(folder), options.only)
    except (NotInSandbox, OSError, RuntimeError) as error:
        return str(error)
    except KeyboardInterrupt:
        return "Interrupted."
    print(describe_machine(log))
    print(table(rows))
    print(f"Measured in {time.monotonic() - begin:.0f} s.")
    for fault in faults:
        print(f"NOT MEASURED: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
