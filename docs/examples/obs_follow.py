#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Prints the score, now and whenever anything changes, through OBS's own remote control.

A password, if obs-websocket wants one, is given as the first argument. Needs the package
"websockets".
"""

import base64
import hashlib
import json
import sys

from websockets.sync.client import connect

HELLO, IDENTIFY, IDENTIFIED, EVENT, REQUEST, RESPONSE = 0, 1, 2, 5, 6, 7
VENDORS = 1 << 9   # the events of plug-ins


def digest(*words):
    return base64.b64encode(hashlib.sha256("".join(words).encode()).digest()).decode()


def show(data):
    fields = data["fields"]
    print(fields.get("home_score", "-"), ":", fields.get("away_score", "-"), flush=True)


with connect("ws://127.0.0.1:4455") as obs:
    def send(op, **data):
        obs.send(json.dumps({"op": op, "d": data}))

    for message in map(json.loads, obs):
        op, data = message["op"], message["d"]
        if op == HELLO:
            answer = {}
            if wish := data.get("authentication"):
                secret = digest(sys.argv[1], wish["salt"])
                answer = {"authentication": digest(secret, wish["challenge"])}
            send(IDENTIFY, rpcVersion=1, eventSubscriptions=VENDORS, **answer)
        elif op == IDENTIFIED:
            send(REQUEST, requestType="CallVendorRequest", requestId="1",
                 requestData={"vendorName": "tallyforge", "requestType": "get"})
        elif op == RESPONSE:
            if not data["requestStatus"]["result"]:
                sys.exit(data["requestStatus"].get("comment", "refused"))
            show(data["responseData"]["responseData"])
        elif op == EVENT and data["eventData"]["vendorName"] == "tallyforge":
            if data["eventData"]["eventType"] == "data":
                show(data["eventData"]["eventData"])
