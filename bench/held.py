# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How long loads from outside hold OBS's main thread, which the plug-in shares."""

import json
import os
import subprocess
import zipfile

from figures import Heading, Row

ENTRIES = 1000
HELD_MILLISECONDS, RARELY_MILLISECONDS, RARELY = 8, 16, 1000
REQUESTS = 50    # of the portal, for 2,000 changes of the device


def make_package(path):
    """A package of ordinary size for its entries, which nobody gets to run."""
    names = ["bundle/bin/64bit/tallyforge-obs.so"]
    names += [f"bundle/data/{n % 10}/file-{n}" for n in range(ENTRIES - 15)]
    with zipfile.ZipFile(path, "w") as package:
        for name in names:
            package.writestr(name, os.urandom(1000))


def make_certificate(folder):
    certificate, key = folder / "held.crt", folder / "held.key"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                    "ec_paramgen_curve:prime256v1", "-nodes", "-days", "1", "-subj",
                    "/CN=localhost", "-keyout", str(key), "-out", str(certificate)],
                   check=True, capture_output=True)
    return certificate, key


def measure(program, folder):
    home = folder / "held"
    home.mkdir()
    make_package(home / "package.zip")
    certificate, key = make_certificate(home)
    env = os.environ | {"QT_QPA_PLATFORM": "offscreen"}
    output = subprocess.run([str(program), str(home / "work"), str(home / "package.zip"),
                             str(certificate), str(key)], check=True, timeout=300, env=env,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    return rows(json.loads(output))


def is_kept(waited):
    """Whether a load holds the thread no longer than it may."""
    return (max(waited) < RARELY_MILLISECONDS
            and sum(time >= HELD_MILLISECONDS for time in waited) * RARELY <= len(waited))


def rows(result):
    requests = result.pop("requests of 2,000 use", None)
    table = [Heading(f"The main thread is held: less than {HELD_MILLISECONDS} ms, "
                     f"{RARELY_MILLISECONDS} once in {RARELY} knocks")]
    for load, waited in result.items():
        if load.startswith("nothing"):
            table.append(Row(load, "ms", waited))
        else:
            table.append(Row(load, "ms", waited, f"< {HELD_MILLISECONDS}", is_kept(waited)))
    if requests is not None:
        table.append(Row("    requests to the portal for 2,000 use", "", [requests],
                         f"< {REQUESTS}", requests < REQUESTS))
    return table
