# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How fast frames are found in the bytes of a USB cable."""

import json
import subprocess

from figures import Heading, Row, median

CLEAN_SPEED, NOISE_SPEED, FALSE_SPEED = 300, 300, 2     # megabytes a second
TWICE = 3     # what grew with the square of the bytes would take 4 times as long


def measure(program):
    return rows(json.loads(subprocess.run([str(program)], check=True, stdout=subprocess.PIPE,
                                          timeout=120).stdout))


def rows(result):
    def speed(name, series, least=None):
        values = result[series]["speed"]
        aim = (f">= {least}", median(values) >= least) if least else ()
        return Row(name, "MB/s", values, *aim)
    twice = [series["twice"] for series in result.values() if isinstance(series, dict)]
    return [
        Heading("Finding the frames in the bytes of a USB cable, read 4096 at a time"),
        speed("Whole frames of all kinds and sizes", "clean", CLEAN_SPEED),
        Row(f"    memory asked for, for a frame of {result['frame_size']:.0f} bytes on average",
            "bytes", [result["allocated"]]),
        speed("Noise that no frame begins in", "noise", NOISE_SPEED),
        speed("Zeros: each might begin a frame", "zeros", NOISE_SPEED),
        speed("False beginnings, each promising 2048 bytes to sum up", "false_syncs", FALSE_SPEED),
        speed("    all at once", "at_once", FALSE_SPEED),
        speed("    byte by byte", "single_bytes", FALSE_SPEED),
        Row("    memory held between two reads, at most", "bytes", [result["held"]]),
        Row("Twice the bytes of each of these take", "times as long", twice, f"< {TWICE}",
            max(twice) < TWICE),
    ]
