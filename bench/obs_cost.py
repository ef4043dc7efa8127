# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What the plug-in adds to a real OBS: its start, its memory, its processor time."""

import re
import time
from dataclasses import dataclass
from pathlib import Path

from figures import Heading, Row, median
from obs_home import MODULE, ObsHome
from obs_session import ObsSession

PAIRS, SHORT_STARTS = 3, 4
SHORT_SECONDS, SETTLE_SECONDS, CPU_SECONDS = 1, 4, 10
MEMORY_MEGABYTES, CPU_PERCENT = 12, 0.5
SCENE, TEMPLATE = "Scene", "{home_score} - {away_score}"
# Drawing on a processor instead of a graphics card, sound, and a look at the keyboard every 25 ms
# take a hundred times as long as anything seen here.
NOT_OURS = re.compile(r"llvmpipe|libobs: |audio-io|video-io|QXcb|obs:disk")
LOADED = re.compile(r"obs_init_module\(([\w.-]+)\.so\): ([\d.]+)\sms")


@dataclass(frozen=True)
class Run:
    """One settled run of OBS."""
    resident: float     # MB
    share: float        # percent of a core, the threads that draw left out
    main: float         # the same for the main thread
    whole: float        # the same for the process


def thread_seconds(pid):
    """Processor time of each thread, by its number and name."""
    result = {}
    for task in Path(f"/proc/{pid}/task").iterdir():
        try:
            name = (task / "comm").read_text().strip()
            result[int(task.name), name] = int((task / "schedstat").read_text().split()[0]) / 1e9
        except (FileNotFoundError, ProcessLookupError):
            pass   # it has just ended
    return result


def watch(obs):
    pid = obs.process.pid
    time.sleep(SETTLE_SECONDS)
    before, begin = thread_seconds(pid), time.monotonic()
    time.sleep(CPU_SECONDS)
    percent = 100 / (time.monotonic() - begin)
    used = {thread: (seconds - before.get(thread, 0)) * percent
            for thread, seconds in thread_seconds(pid).items()}
    return Run(obs.resident_kilobytes() / 1024,
               sum(share for (_, name), share in used.items() if not NOT_OURS.match(name)),
               next(share for (number, _), share in used.items() if number == pid),
               sum(used.values()))


def with_plugin(home, device, env, is_short=False):
    """A run that is live over the local network; gives the measured Run, and its log."""
    run = None
    with ObsSession(home, env) as obs:
        obs.wait_for_status(f"Live from {device['nickname']} over your network")
        if is_short:
            time.sleep(SHORT_SECONDS)
        else:
            obs.create_input(SCENE, "Score", "tallyforge_text", {"template": TEMPLATE})
            run = watch(obs)
    return run, obs.log()


def without_plugin(home, text, env):
    with ObsSession(home, env) as obs:
        obs.create_input(SCENE, "Score", "text_ft2_source_v2", {"text": text})
        return watch(obs)


def fresh_home(folder, plugin=None, simulator=None, device_id=None):
    home = ObsHome(folder)
    if plugin:
        home.install(plugin)
        home.write_session(simulator.cookie)
        home.write_settings({"selected_device": device_id, "routes": {device_id: "lan"},
                             "lan": {device_id: simulator.lan_entry(device_id)}})
    return home


def measure(plugin, folder, simulator, device_id, env):
    """The table's rows and one of OBS's logs."""
    device = simulator.devices[device_id]
    text = TEMPLATE.format_map(simulator.device(device_id)["fields"])   # for the same picture
    present, absent = [], []
    # The first start on a machine fills caches, and is bigger for it: these go before the pairs.
    home = fresh_home(folder / "short", plugin, simulator, device_id)
    logs = [with_plugin(home, device, env, is_short=True)[1] for _ in range(SHORT_STARTS)]
    for n in range(PAIRS):
        absent.append(without_plugin(fresh_home(folder / f"without-{n}"), text, env))
        run, log = with_plugin(fresh_home(folder / f"with-{n}", plugin, simulator, device_id),
                               device, env)
        present.append(run)
        logs.append(log)
    return rows(present, absent, [load_times(log) for log in logs]), logs[-1]


def load_times(log):
    """Milliseconds by module, from the profiler's part of OBS's log."""
    times = {name: float(milliseconds) for name, milliseconds in LOADED.findall(log)}
    if MODULE not in times or "obs-websocket" not in times:
        raise RuntimeError("OBS's log does not tell how long a module took to load; it ends with "
                           + repr(log[-200:]))
    return times


def rows(present, absent, loads):
    def added(what):
        return [getattr(run, what) - getattr(other, what) for run, other in zip(present, absent)]
    ours, websocket = ([load[name] for load in loads] for name in (MODULE, "obs-websocket"))
    memory, share = added("resident"), added("share")
    return [
        Heading("What the plug-in adds to a real OBS, live over the local network"),
        Row("Start: loading obs-websocket, from OBS's log", "ms", websocket),
        Row("Start: loading the plug-in, from the same logs", "ms", ours,
            "<= obs-websocket", median(ours) <= median(websocket)),
        Row("Resident memory", "MB", memory, f"< {MEMORY_MEGABYTES}",
            median(memory) < MEMORY_MEGABYTES),
        Row("CPU, heartbeats only: all threads that don't draw", "% core", share,
            f"< {CPU_PERCENT}", median(share) < CPU_PERCENT),
        Row("    the main thread", "% core", added("main")),
        Row("    the whole process, drawing included", "% core", added("whole")),
    ]
