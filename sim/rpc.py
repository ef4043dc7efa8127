# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Requests and replies as JSON texts, for carriers that bring whole texts."""

import asyncio
import json
import re

from admin import DURATIONS
from net import log
from signin import Refused, Session

STRINGS = re.compile(rb'"(\\.|[^"\\])*"')
BLANKS = re.compile(rb"\s")
KEYS = {"id": int, "method": str, "params": dict}
GARBAGE = b"{%% this device has lost its mind %%"


def compact(message):
    return json.dumps(message, separators=(",", ":")).encode()


def is_compact(text):
    """Whether there are no blanks between the members of a JSON text."""
    return not BLANKS.search(STRINGS.sub(b"", text))


def _request(text):
    """The request that a text holds; raises ValueError with the rule that it breaks."""
    try:
        message = json.loads(text)
    except (ValueError, RecursionError):
        raise ValueError("a request is not JSON") from None
    if not isinstance(message, dict) or set(message) != set(KEYS):
        raise ValueError("a request is not an object of id, method and params alone")
    if any(type(message[key]) is not kind for key, kind in KEYS.items()):
        raise ValueError("a member of a request is of the wrong JSON type")
    if message["id"] < 1:
        raise ValueError("a request's id is not above 0")
    if not is_compact(text):
        raise ValueError("a request is not compact JSON")
    return message


class RpcServer:
    """Answers one connection's requests, with the faults that the device has."""

    def __init__(self, venue, faults, admin, carrier, send):
        self._venue = venue
        self._faults = faults
        self._admin = admin
        self._carrier = carrier
        self._send = send          # a coroutine of a reply's text and the fault it meets or None
        self._tasks = set()
        self._busy = False
        self.session = Session(carrier)
        self.logins = 0
        self.requests = {}         # method -> how often it came over this carrier

    def reset(self):
        """The connection has ended, and with it the sign-in and all requests under way."""
        for task in self._tasks:
            task.cancel()
        self._busy = False
        self.session = Session(self._carrier)

    def take(self, text):
        try:
            request = _request(text)
        except ValueError as error:
            self._venue.violation(f"{self._carrier} {self._admin.device.id}: {error}")
            return
        task = asyncio.get_running_loop().create_task(self._serve(request))
        self._tasks.add(task)
        task.add_done_callback(self._tasks.discard)

    async def _serve(self, request):
        method = request["method"]
        if len(self.requests) < 100 or method in self.requests:
            self.requests[method] = self.requests.get(method, 0) + 1
        fault = self._faults.usb.take(self._admin.device.id, "rpc", method)
        kind = fault and fault.kind
        if kind == "silent":
            return
        reply = await self._reply(request, fault)
        if kind == "unanswered":
            return
        if kind == "wrong-id":
            reply["id"] += 1000
        if kind == "late":
            await asyncio.sleep(fault.seconds)
        text = GARBAGE if kind == "garbage" else compact(reply)
        try:
            for _ in range(2 if kind == "twice" else 1):
                await self._send(text, fault)
        except ValueError as error:
            log(f"{self._carrier} {self._admin.device.id}: no answer to {method}: {error}")

    async def _reply(self, request, fault):
        try:
            result = await self._result(request, fault)
        except Refused as refusal:
            return {"id": request["id"], "ok": False,
                    "error": {"code": refusal.code, "message": str(refusal)}}
        if request["method"] == "login":
            self.logins += 1
        return {"id": request["id"], "ok": True, "result": result}

    async def _result(self, request, fault):
        if fault and fault.kind == "result":
            return fault.result
        if self._busy or (fault and fault.kind == "busy"):
            raise Refused("busy", "The device is busy. Try again in a moment.")
        if fault and fault.kind == "error":
            raise Refused(fault.code, fault.message or "The device could not do that.")
        self._busy = True
        try:
            await self._admin.clock.sleep(DURATIONS.get(request["method"], 0))
            return self._admin.handle(request["method"], request["params"], self.session)
        finally:
            self._busy = False
