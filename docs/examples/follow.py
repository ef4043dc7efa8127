#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Prints the score, now and whenever anything changes."""

import json
import socket

with socket.create_connection(("127.0.0.1", 9001)) as server:
    for line in server.makefile(encoding="utf-8"):
        fields = json.loads(line)["fields"]
        print(fields.get("home_score", "-"), ":", fields.get("away_score", "-"), flush=True)
