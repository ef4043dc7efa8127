#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Lists the account's devices, or follows the one whose id is given."""

import json
import socket
import sys

request = {"op": "use", "device": sys.argv[1]} if len(sys.argv) > 1 else {"op": "devices"}
with socket.create_connection(("127.0.0.1", 9001)) as server:
    server.sendall(json.dumps(request).encode() + b"\n")
    for line in server.makefile(encoding="utf-8"):
        reply = json.loads(line)
        if "ok" in reply:    # anything else is a change of the scores
            break
    else:
        sys.exit("The connection has ended.")
if not reply["ok"]:
    sys.exit(reply["error"])
for device in reply.get("devices", []):
    print(device["id"], device["name"], sep="\t")
