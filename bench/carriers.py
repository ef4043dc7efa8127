# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What a session costs over each carrier, beside the carrier alone."""

from itertools import product
from urllib.parse import urlsplit

from asker import Asker
from figures import Heading, Row, median

ROUNDS = 200
LONG_REQUEST = 4096
LONG_ROUNDS = {20: 30, 244: 150}   # by the bytes of a write
POLL_PHASES = 14           # milliseconds: a cable's poll is met at all of its phases alike
CONFIRM_MILLISECONDS = 2   # a radio takes longer, and so would the measurement
TIMES, LONG_TIMES = 1.3, 1.1


def compared(name, bare_name, series, aim):
    if median(series[1]) < 1:
        unit, series = "us", [[value * 1000 for value in values] for values in series]
    else:
        unit = "ms"
    took, bare = series
    times = median(took) / median(bare)
    return [Row(name, unit, took), Row(f"    {bare_name}", unit, bare),
            Row("    times that", "", [times], f"<= {aim}", times <= aim)]


def open_ble(asker, size, delay):
    asker.open(f"ble {size} {delay}")
    asker.open("bare-ble")


def measure(program, simulator, device_id, bare_id):
    password = simulator.admin_password(device_id)
    lan = urlsplit(simulator.devices[device_id]["lan"]).netloc
    rows = [Heading('A "getState" over each carrier, in turn with the carrier alone')]
    with Asker(program) as asker:
        asker.open(f"usb {simulator.usb_port} {password}")
        asker.open(f"bare-usb {simulator.ready['usb'][1]['path']} "
                   f"{simulator.admin_password(bare_id)}")
        rows += compared("USB cable", "writing and reading the port, with the same poll of 15 ms",
                         asker.compare(ROUNDS, pause=POLL_PHASES), TIMES)
        for kind in ("http", "bare-http"):
            asker.open(f"{kind} {lan} {password}")
        rows += compared("Local network", "a GET of the same", asker.compare(ROUNDS), TIMES)
        for size in LONG_ROUNDS:
            open_ble(asker, size, 0)
            rows += compared(f"Bluetooth, {size} bytes a write",
                             "the same lines to the helper's double and back",
                             asker.compare(ROUNDS), TIMES)
        for delay, size in product((CONFIRM_MILLISECONDS, 0), LONG_ROUNDS):
            open_ble(asker, size, delay)
            when = f"{delay} ms later" if delay else "at once"
            rows += compared(f"4 KB over Bluetooth, {size} bytes a write, confirmed {when}",
                             "as many writes, each after the answer to the one before",
                             asker.compare(LONG_ROUNDS[size], LONG_REQUEST), LONG_TIMES)
    return rows
