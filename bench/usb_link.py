# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What a USB link costs while it is idle, and what its tunnel carries while it is full."""

import time

from asker import Asker
from figures import Heading, Row
from obs_session import wait_until

IDLE_SECONDS, IDLE_RUNS = 5, 3
TRANSFER_BYTES = 256_000           # 20 seconds of the tunnel, in less than its queue holds
PACE_BYTES = 512 / 0.040           # a second: one full frame in 40 ms
ANSWERS = 30
CPU_PERCENT, PACE_PERCENT, ANSWER_MILLISECONDS = 1, 95, 100


def idle_cpu(asker):
    """Percent of a core."""
    shares = []
    for _ in range(IDLE_RUNS):
        begin, used = time.monotonic(), asker.cpu_seconds()
        time.sleep(IDLE_SECONDS)
        shares.append((asker.cpu_seconds() - used) / (time.monotonic() - begin) * 100)
    return shares


def full_tunnel(asker, simulator):
    """The share of its pace at which the tunnel brought bytes, and the answers meanwhile."""
    simulator.call("/usb/pipe", {"reset": True})
    simulator.call("/cloud", {"target": "pipe", "mode": "sink"})
    simulator.call("/usb/pipe", {"send": 1})
    wait_until(lambda: simulator.call("/cloud")["pipe"]["connections"], what="the connection")
    simulator.call("/cloud", {"target": "pipe", "send": TRANSFER_BYTES})
    time.sleep(1)
    answers = asker.ask("getStatus", ANSWERS)

    def received():
        flow = next(iter(simulator.state()["devices"].values()))["usb"]["pipe"]["received"]
        return flow if flow["bytes"] >= TRANSFER_BYTES else None
    during = received() is None
    flow = wait_until(received, timeout=60, what="the tunnel's bytes")
    if not during:
        raise RuntimeError("The transfer was over before the answers were.")
    seconds = (flow["last_ns"] - flow["first_ns"]) / 1e9
    return [flow["bytes"] / seconds / PACE_BYTES * 100], answers


def measure(program, simulator, device_id):
    with Asker(program) as asker:
        asker.open(f"usb {simulator.usb_port} {simulator.admin_password(device_id)}")
        cpu = idle_cpu(asker)
        free = asker.ask("getStatus", ANSWERS)
        share, answers = full_tunnel(asker, simulator)
    return [
        Heading("A device on a USB cable"),
        Row("CPU while the link is open and idle", "% core", cpu, f"< {CPU_PERCENT}",
            max(cpu) < CPU_PERCENT),
        Row("An admin request's answer", "ms", free),
        Row("    while the tunnel is full", "ms", answers, f"< {ANSWER_MILLISECONDS}",
            max(answers) < ANSWER_MILLISECONDS),
        Row("The tunnel's share of its pace, one frame in 40 ms", "%", share,
            f">= {PACE_PERCENT}", share[0] >= PACE_PERCENT),
    ]
