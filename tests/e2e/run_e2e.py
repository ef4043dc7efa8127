#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Runs one end-to-end test: the built plug-in in a real OBS, against the simulator."""

import argparse
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "demo"))

import docks
import graphics
import language
import managers
import scenarios
import server
import setups
import update
from stage import Stage
from xvfb import Xvfb

SKIPPED = 77
SCENARIOS = {run.__name__: run for run in (
    scenarios.cloud, scenarios.lan, scenarios.vanished, scenarios.choice, scenarios.style,
    scenarios.many, scenarios.closing, scenarios.untrusted, graphics.page, graphics.properties,
    graphics.refresh, language.german, server.used, server.remote, update.update, update.update_refused,
    update.update_killed, update.update_closed, docks.dock_sign_in, docks.dock_choice,
    docks.dock_scene, docks.dock_server, docks.dock_keyboard,
    docks.dock_narrow, setups.setup_first, setups.setup_live, setups.setup_network,
    setups.setup_receiver, setups.setup_bluetooth, setups.setup_unplugged, setups.setup_closing,
    managers.manager_settings, managers.manager_security, managers.manager_update, managers.manager_refused,
    managers.manager_tools, managers.manager_closing,
    managers.manage_account)}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("name", choices=SCENARIOS)
    parser.add_argument("--plugin", type=Path, required=True, help="folder of the built plug-in")
    parser.add_argument("--browser", type=Path, required=True,
                        help="folder of the built stand-in for OBS's browser source")
    parser.add_argument("--finder", type=Path, required=True,
                        help="folder of the module that tells what OBS's windows show")
    parser.add_argument("--next", type=Path, required=True,
                        help="folder with the plug-in's binary and the facts of its next version")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tallyforge-e2e-") as folder, Xvfb() as screen:
        stage = Stage(options, Path(folder), screen)
        begin = time.monotonic()
        try:
            reason = SCENARIOS[options.name](stage)
        except BaseException as error:
            print(f"{type(error).__name__}: {error}")
            logs = Path(folder).glob("*/obs-output.txt")
            for log in sorted(logs, key=lambda log: log.stat().st_mtime)[-1:]:
                lines = log.read_text(errors="replace").splitlines()
                print(f"--- {log.parent.name}", *lines[-60:], sep="\n")
            raise
        if reason:
            print("Skipped:", reason)
            return SKIPPED
        print(f"{options.name}: {stage.runs} runs of OBS in {time.monotonic() - begin:.1f} s")
    return 0


if __name__ == "__main__":
    sys.exit(main())
