# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Plants faults in a copy of the project, one at a time, and says which tests notice each.

The faults stand in scripts/faults/*.toml: "id", "file", "kind", "old" (a text that the file holds
once), "new", and for one that no test can be expected to notice "unnoticed", the reason. The exit
code is 1 when any other one goes unnoticed. The results are kept in build/faults/results.json.
"""

import argparse
import contextlib
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import time
import tomllib
from pathlib import Path

COPY = Path("build/faults/tree")
RESULTS = Path("build/faults/results.json")
PRESET = "dev"
BUILD_SECONDS, TEST_SECONDS = 900, 120   # a fault may make a test wait for ever

# What looks at a folder: tests of the code by itself, which come first, and of the plug-in in OBS.
USB = "tst_serial_port tst_session_over_usb tst_usb_link tst_usb_codec tst_stream_relay tst_cloud_relay"
BLE = "tst_ble_bridge tst_ble_fragments tst_ble_link tst_session_over_ble"
HTTP = "tst_http_link tst_session_over_http"
DEVICE = "tst_session_over_fake tst_rpc_client"
DIALOGS = "tst_panels tst_settings_panel tst_tool_panels tst_manage_dialog tst_setup_dialog"
SETUP_RUNS = "setup_.* manager_.* manage_account"
TESTS = {
    "src": ("tst_app", "cloud lan"),
    "src/common": ("tst_common tst_live_data tst_app tst_tls_feed tst_http_link", "cloud lan"),
    "src/core": ("tst_hosted_server tst_live_data tst_settings_store tst_source_manager tst_tls_feed "
                 "tst_app tst_tcp_protocol", "cloud lan vanished choice dock_.* used"),
    "src/device": (f"{DEVICE} tst_session_over_usb tst_session_over_ble tst_session_over_http "
                   "tst_setup_dialog tst_tool_panels tst_source_manager tst_usb_relays", "setup_.*"),
    "src/device/ble": (f"{BLE} {DEVICE}", "setup_bluetooth"),
    "src/device/http": (f"{HTTP} tst_source_manager", "lan setup_network"),
    "src/device/usb": (f"{USB} tst_usb_relays", SETUP_RUNS),
    "src/platform": (f"tst_platform tst_settings_store tst_ble_bridge tst_bundle_installer {USB} tst_hosted_server",
                     "closing setup_bluetooth"),
    "src/plugin": ("tst_app tst_tcp_protocol tst_usb_relays tst_dock",
                   "cloud choice closing remote used dock_.*"),
    "src/portal": ("tst_portal_client tst_app tst_source_manager tst_manage_dialog", "cloud dock_sign_in"),
    "src/sources": ("tst_text_template tst_text_source tst_graphics_source", "cloud page properties refresh style"),
    "src/ui": ("tst_dock tst_scene_sources " + DIALOGS, "dock_.* " + SETUP_RUNS),
    "src/ui/account": ("tst_manage_dialog", "manage_account"),
    "src/ui/dock": ("tst_dock tst_scene_sources", "dock_.*"),
    "src/ui/manager": (DIALOGS, SETUP_RUNS),
    "src/ui/setup": ("tst_setup_dialog", SETUP_RUNS),
    "src/updater": ("tst_update_manifest tst_bundle_installer tst_installation_crash tst_plugin_updater "
                    "tst_staged_package", "update.*"),
    "helper": ("bluetooth_helper tst_ble_bridge", "setup_bluetooth"),
}


def tests_of(file):
    """The two stages of tests for a file, each as a list of patterns."""
    folder = next(str(parent) for parent in Path(file).parents if str(parent) in TESTS)
    alone, in_obs = TESTS[folder]
    return alone.split(), [f"e2e\\.{name}" for name in in_obs.split()]


def load(words):
    faults = []
    for path in sorted(Path("scripts/faults").glob("*.toml")):
        faults += tomllib.loads(path.read_text("utf-8"))["fault"]
    seen = set()
    for fault in faults:
        text = Path(fault["file"]).read_text("utf-8")
        if fault["id"] in seen or text.count(fault["old"]) != 1 or fault["old"] == fault["new"]:
            raise SystemExit(f"{fault['id']}: its name or its old text isn't there exactly once")
        seen.add(fault["id"])
    return [fault for fault in faults
            if not words or any(word in fault[key] for word in words for key in ("id", "file", "kind"))]


def run(command, seconds):
    """Gives the exit code, None when the time was up, and what was printed."""
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace",
                          start_new_session=True) as process:
        try:
            output, _ = process.communicate(timeout=seconds)
            return process.returncode, output
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None, process.communicate()[0]


def build(patterns):
    """Builds what the tests of these patterns need."""
    if any(pattern.startswith("e2e") for pattern in patterns):
        targets = ["stage-parts"]
    else:
        targets = [name for name in patterns if name.startswith("tst_")]
        if "bluetooth_helper" in patterns:
            targets.append("tallyforge-bluetooth-helper")
    code, output = run(["scripts/build.sh", PRESET, *targets], BUILD_SECONDS)
    if code != 0:
        raise SystemExit("It doesn't build:\n" + "\n".join(output.splitlines()[-30:]))


def failing(patterns):
    """The tests that fail; a single one where the others were not tried any more."""
    code, output = run(["ctest", "--preset", PRESET, "--stop-on-failure", "-j3",
                        "-R", f"^({'|'.join(patterns)})$"], TEST_SECONDS)
    if code is None:
        return ["none comes to its end"]
    found = re.findall(r"^\s*\d+ - (\S+) \((?!Skipped|Not Run)", output, re.MULTILINE)
    if code != 0 and not found:
        raise SystemExit("ctest failed:\n" + output[-2000:])
    return found


@contextlib.contextmanager
def planted(fault):
    file = Path(fault["file"])
    good = file.read_text("utf-8")
    file.write_text(good.replace(fault["old"], fault["new"]), "utf-8")
    try:
        yield
    finally:
        file.write_text(good, "utf-8")


def notice(fault, stages):
    with planted(fault):
        for patterns in tests_of(fault["file"])[:stages]:
            build(patterns)
            if found := failing(patterns):
                return found
    return []


def check_unharmed(faults):
    """Without a fault everything passes, or the results would mean nothing."""
    patterns = sorted({pattern for fault in faults for pattern in tests_of(fault["file"])[0]})
    build(patterns)
    if found := failing(patterns):
        raise SystemExit(f"These fail without any fault: {' '.join(found)}")


def summarize(faults, results):
    folders = {}
    for fault in faults:
        folder = "/".join(Path(fault["file"]).parts[:2]) if fault["file"].startswith("src") else "helper"
        folders.setdefault(folder, []).append(bool(results.get(fault["id"])))
    for folder, noticed in sorted(folders.items()):
        print(f"{folder:14} {sum(noticed):3} of {len(noticed):3} noticed")
    print(f"{'together':14} {sum(map(sum, folders.values())):3} of {len(faults):3} noticed")


def plant(options):
    faults = load(options.words)
    results = json.loads(RESULTS.read_text()) if options.resume and RESULTS.exists() else {}
    left = [fault for fault in faults if fault["id"] not in results]
    check_unharmed(left)
    for fault in left:
        begin = time.monotonic()
        results[fault["id"]] = found = notice(fault, 1 if options.alone else 2)
        RESULTS.write_text(json.dumps(results, indent=1))
        print(f"{'noticed' if found else 'UNNOTICED'}  {fault['id']}  {' '.join(found)}  "
              f"({time.monotonic() - begin:.0f} s)", flush=True)
    summarize(faults, results)
    missed = [fault for fault in faults if not results[fault["id"]]]
    for fault in missed:
        print(f"unnoticed: {fault['id']} ({fault['file']}): {fault.get('unnoticed', 'no reason is known')}")
    return int(any("unnoticed" not in fault for fault in missed))


def files_below(root):
    """All but what is built and what git keeps, with the names relative to the root."""
    found = set()
    for folder, folders, names in os.walk(root):
        if Path(folder) == root:
            folders[:] = [name for name in folders if name not in ("build", ".git")]
        found.update((Path(folder) / name).relative_to(root) for name in names)
    return found


def copy_project():
    """Brings the copy up to date, without touching what is the same, so that little is built anew."""
    wanted = files_below(Path("."))
    for name in wanted:
        target = COPY / name
        if not target.exists() or target.read_bytes() != name.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(name, target)
    for name in files_below(COPY) - wanted:
        (COPY / name).unlink()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("words", nargs="*", help="only faults with one of these in id, file or kind")
    parser.add_argument("--resume", action="store_true", help="leave out those that have a result")
    parser.add_argument("--alone", action="store_true", help="without the tests that start OBS")
    parser.add_argument("--inside", action="store_true", help=argparse.SUPPRESS)
    options = parser.parse_args()
    if options.inside:
        return plant(options)
    load(options.words)
    copy_project()
    # The copy stands in for the project, so that ccache knows what was compiled there.
    (COPY / RESULTS.parent).mkdir(parents=True, exist_ok=True)
    stand_in = f"""mount --bind {RESULTS.parent} {COPY / RESULTS.parent}
                   mount --rbind {COPY} .
                   cd "$PWD"
                   exec "$@" """
    return subprocess.run(["unshare", "--map-root-user", "--mount", "sh", "-ec", stand_in, "sh",
                           sys.executable, "scripts/plant_faults.py", *sys.argv[1:], "--inside"],
                          check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
