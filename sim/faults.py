# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The faults that are on: checks requests for them, and keeps them."""

import asyncio
from dataclasses import dataclass, field

from net import first_of

PORTAL_KINDS = {   # kind -> the keys that it takes beside where and kind
    "refuse": set(),
    "slow": {"path", "count", "seconds"},
    "hang": {"path", "count"},
    "garbage": {"path", "count"},
    "cut": {"path", "count"},
    "trickle": {"path", "count", "seconds"},
    "status": {"path", "count", "status", "body", "code"},
}
_SOME = {"path", "count"}
UPDATE_KINDS = {
    "refuse": set(),
    "hang": _SOME,
    "trickle": _SOME | {"seconds"},
    "stall": _SOME,
    "cut": _SOME,
    "endless": _SOME,
    "garbage": _SOME,
    "wrong-hash": _SOME,
    "wrong-size": _SOME,
    "redirect": _SOME | {"to"},
    "status": _SOME | {"status", "body"},
}
FEED_KINDS = {"refuse", "reject", "silent", "hang-handshake", "plain", "drop", "reset", "split",
              "join", "garbage", "late-auth-fail", "away", "freeze"}
PASSING = {"drop", "reset"}   # these happen once and leave the fault that is on as it is
DEVICE_KINDS = {"pending", "offline", "gone"}

DEFAULT_BODIES = {
    401: {"detail": {"error": "not_authenticated"}},
    403: {"detail": "Your role does not include this."},
    404: {"detail": {"error": "device_not_found_or_not_owned"}},
    429: {"error": "rate_limited"},
    500: {"detail": "The service had an internal problem."},
    502: {"error": "gateway_unreachable"},
    504: {"detail": {"error": "device_unreachable_or_timeout"}},
}


class FaultError(Exception):
    """A request for a fault that does not exist, told in a sentence."""


@dataclass
class PathFault:
    kind: str
    path: str = ""
    count: int = None
    seconds: float = 2.0
    status: int = 500
    body: object = None
    to: str = ""
    over: asyncio.Event = field(default_factory=asyncio.Event)

    def shown(self):
        keys = {"path": self.path or None, "count": self.count,
                "seconds": self.seconds if self.kind in ("slow", "trickle") else None,
                "status": self.status if self.kind == "status" else None, "to": self.to or None}
        return {"kind": self.kind} | {key: value for key, value in keys.items()
                                      if value is not None}


async def trickled(pieces, fault):
    """The bytes of pieces one at a time, and the rest at once when the fault is over."""
    async for piece in pieces:
        for at in range(len(piece)):
            if fault.over.is_set():
                yield piece[at:]
                break
            yield piece[at:at + 1]
            await first_of(fault.over.wait(), asyncio.sleep(fault.seconds))


class Hanging:
    """A server that leaves requests without an answer while a fault is on."""

    hanging = 0   # requests that wait now

    async def _hang(self, fault):
        self.hanging += 1
        try:
            await fault.over.wait()
        finally:
            self.hanging -= 1


class PathFaults:
    """The faults of one HTTP server, at most one for each prefix of paths."""

    def __init__(self, name, kinds):
        self._name = name
        self._kinds = kinds
        self._on = {}      # path prefix -> PathFault
        self._spent = []   # whose count has run out while requests still hang in them

    def shown(self):
        return [fault.shown() for fault in self._on.values()]

    def set(self, wish):
        kind = wish.get("kind")
        if not isinstance(kind, str) or kind not in self._kinds:
            raise FaultError(f"The {self._name}'s kinds of faults are {', '.join(self._kinds)}.")
        extra = set(wish) - self._kinds[kind] - {"where", "kind"}
        if extra:
            raise FaultError(f"The fault {kind} does not take {', '.join(sorted(extra))}.")
        self._check_values(wish)
        values = {key: value for key, value in wish.items() if key not in ("where", "code")}
        fault = PathFault(**values)
        if fault.body is None:
            code = wish.get("code")
            fault.body = {"detail": {"error": code}} if code \
                else DEFAULT_BODIES.get(fault.status, {})
        if fault.path in self._on:
            self._on[fault.path].over.set()
        self._on[fault.path] = fault

    @staticmethod
    def _check_values(wish):
        path, count, seconds = wish.get("path", "/"), wish.get("count", 1), wish.get("seconds", 0)
        if not isinstance(path, str) or not path.startswith("/"):
            raise FaultError("path must be a text that begins with a slash.")
        if type(count) is not int or count < 1:
            raise FaultError("count must be a whole number from 1.")
        if type(seconds) not in (int, float) or not 0 <= seconds <= 3600:
            raise FaultError("seconds must be a number from 0 to 3600.")
        status = wish.get("status", 500)
        if type(status) is not int or not 200 <= status <= 599:
            raise FaultError("status must be a whole number from 200 to 599.")
        for key in ("code", "to"):
            if not isinstance(wish.get(key, ""), str):
                raise FaultError(f"{key} must be a text.")
        if wish["kind"] == "redirect" and not wish.get("to"):
            raise FaultError("A redirect needs an address in to.")

    def take(self, path):
        """The fault for a request to this path, if any; this counts as one of its requests."""
        fits = [prefix for prefix in self._on if path.startswith(prefix)]
        if not fits:
            return None
        fault = self._on[max(fits, key=len)]
        if fault.count is not None:
            fault.count -= 1
            if fault.count == 0:
                del self._on[fault.path]
                self._spent.append(fault)
        return fault

    @property
    def refuse(self):
        return any(fault.kind == "refuse" for fault in self._on.values())

    def clear(self):
        for fault in [*self._on.values(), *self._spent]:
            fault.over.set()
        self._on.clear()
        self._spent.clear()


class Faults:
    def __init__(self, usb, lan):
        self.usb = usb     # UsbFaults
        self.lan = lan     # LanFaults
        self.portal = PathFaults("portal", PORTAL_KINDS)
        self.updates = PathFaults("update server", UPDATE_KINDS)
        self.feed = {}     # device id -> kind
        self.device = {}   # device id -> kind

    def shown(self):
        return {"portal": self.portal.shown(), "updates": self.updates.shown(),
                "feed": dict(self.feed), "device": dict(self.device), "usb": self.usb.shown(),
                "lan": self.lan.shown()}

    def set_devices(self, where, kind, ids):
        kinds = FEED_KINDS if where == "feed" else DEVICE_KINDS
        if kind not in kinds:
            raise FaultError(f"The {where}'s kinds of faults are {', '.join(sorted(kinds))}.")
        if kind not in PASSING:
            getattr(self, where).update((device, kind) for device in ids)

    def clear(self, where=None):
        for place in (where,) if where else ("portal", "updates", "feed", "device", "usb", "lan"):
            getattr(self, place).clear()
