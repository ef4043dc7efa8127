# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long a changed value takes to its last reader over TCP, beside other ways to get it there."""

import json
import resource
import socket
import subprocess
from contextlib import ExitStack, contextmanager

from figures import Heading, Row, median
from obs_session import wait_until

READERS, ROUNDS = (1, 100, 1000), 200
FLOOR_TIMES, CLIENT_KB = 1.3, 30
MQTT_PORT, BROKER_PORT = 1883, 9100
MOSQUITTO = f"""listener {MQTT_PORT} 127.0.0.1
allow_anonymous true
set_tcp_nodelay true
max_connections -1
user root
"""
NCAT = ["ncat", "--listen", "--broker", "--max-conns", "2000", "127.0.0.1", str(BROKER_PORT)]


@contextmanager
def running(command, port):
    with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
        def listens():
            with socket.socket() as probe:
                return probe.connect_ex(("127.0.0.1", port)) == 0
        try:
            wait_until(listens, what=command[0])
            yield
        finally:
            process.kill()


def run(program, *arguments):
    return json.loads(subprocess.run([str(program), *map(str, arguments)], check=True, timeout=300,
                                     stdout=subprocess.PIPE).stdout)


def race(program, folder, readers):
    settings = folder / "mosquitto.conf"
    settings.write_text(MOSQUITTO)
    with ExitStack() as brokers:
        brokers.enter_context(running(["mosquitto", "-c", str(settings)], MQTT_PORT))
        brokers.enter_context(running(NCAT, BROKER_PORT))
        result = run(program, readers, ROUNDS, MQTT_PORT, BROKER_PORT)
    return {way: [value / 1e3 for value in values] for way, values in result.items()}


def race_rows(readers, took):
    hosted, floor = took["hosted"], took["bare"]
    fastest = min(median(took["mqtt"]), median(took["broker"]))
    limit = min(FLOOR_TIMES * median(floor), fastest)
    return [
        Row(f"{readers} reader{'s' * (readers > 1)}: the plug-in's server", "us", hosted,
            f"< {limit:.1f}", median(hosted) < limit),
        Row("    beside a program that never reads", "us", took["sleeper"]),
        Row("    a bare loop of send, the floor", "us", floor),
        Row("    an MQTT broker (mosquitto)", "us", took["mqtt"]),
        Row("    a line broker (ncat)", "us", took["broker"]),
    ]


def measure(program, folder):
    few, most = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
    try:
        return measure_with_enough_files(program, folder)
    finally:
        resource.setrlimit(resource.RLIMIT_NOFILE, (few, most))


def measure_with_enough_files(program, folder):
    rows = [Heading(f"A changed value to its last reader over TCP: within {FLOOR_TIMES} times the "
                    "floor and before the brokers")]
    for readers in READERS:
        rows += race_rows(readers, race(program, folder, readers))
    costs = run(program, READERS[-1])
    kilobytes = costs["bytes"] / 1000
    return rows + [
        Row(f"{READERS[-1]} readers: memory for each", "kB", [kilobytes], f"< {CLIENT_KB}",
            kilobytes < CLIENT_KB),
        Row("    CPU at ten changes a second", "% core", [share * 100 for share in costs["cpu"]]),
        Row("    the same in a bare loop of send", "% core",
            [share * 100 for share in costs["bare_cpu"]]),
    ]
