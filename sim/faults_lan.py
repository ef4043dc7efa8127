# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The faults that are on in the devices' local HTTP interfaces."""

import asyncio
from dataclasses import dataclass, field

from faults import FaultError

_SOME = {"method", "count", "after"}
KINDS = {   # kind -> the keys that it takes beside where, kind and device
    "refuse": set(),
    "hang": _SOME,
    "slow": _SOME | {"seconds"},
    "drop": _SOME,
    "cut": _SOME,
    "garbage": _SOME,
    "status": _SOME | {"status", "body"},
    "expire": set(),
    "renew-token": set(),
}
PASSING = {"expire", "renew-token"}   # these happen once, and leave the faults that are on
BODIES = {
    400: {"code": "bad_request", "message": "The device did not understand that."},
    401: {"error": "unauthorized", "message": "Sign in first."},
    403: {"error": "csrf_invalid"},
    429: {"error": "rate_limited", "message": "Too many attempts. Wait a minute."},
    503: {"error": "unavailable", "message": "The device is starting."},
}


@dataclass
class LanFault:
    kind: str
    method: str = ""       # empty: any
    after: int = 0         # so many requests don't meet it yet
    count: int = None      # how many requests it still meets; None: until it is cleared
    seconds: float = 2.0
    status: int = 500
    body: object = None    # None: the one that fits the status; a text is sent as it is
    over: asyncio.Event = field(default_factory=asyncio.Event)

    def shown(self):
        told = {"kind": self.kind, "method": self.method or None, "count": self.count,
                "after": self.after or None,
                "seconds": self.seconds if self.kind == "slow" else None,
                "status": self.status if self.kind == "status" else None}
        return {key: value for key, value in told.items() if value is not None}

    @property
    def answer(self):
        body = BODIES.get(self.status, {}) if self.body is None else self.body
        return body.encode() if isinstance(body, str) else body


def parse(wish, methods):
    kind = wish.get("kind")
    if not isinstance(kind, str) or kind not in KINDS:
        raise FaultError(f"The kinds of faults on the local network are {', '.join(KINDS)}.")
    values = {key: value for key, value in wish.items() if key not in ("where", "device")}
    extra = set(values) - KINDS[kind] - {"kind"}
    if extra:
        raise FaultError(f"The fault {kind} does not take {', '.join(sorted(extra))}.")
    for key, types, low, high in (("count", (int,), 1, 10**6),
                                  ("after", (int,), 0, 10**6), ("status", (int,), 200, 599),
                                  ("seconds", (int, float), 0, 3600)):
        value = values.get(key, low)
        if type(value) not in types or not low <= value <= high:
            raise FaultError(f"{key} must be a number from {low} to {high}.")
    if values.get("method", "") not in ("", *methods):
        raise FaultError(f"method must be one of {', '.join(methods)}.")
    return LanFault(**values)


class LanFaults:
    """The faults of each device, one for each method and one for all others."""

    def __init__(self):
        self._on = {}      # device id -> {method: LanFault}
        self._spent = []   # whose count has run out while requests still hang in them

    def shown(self):
        return {device: [fault.shown() for fault in faults.values()]
                for device, faults in self._on.items() if faults}

    def set(self, wish, ids, methods):
        """Returns the kind, if it is one that happens once."""
        for device in ids:
            fault = parse(wish, methods)
            if fault.kind in PASSING:
                return fault.kind
            faults = self._on.setdefault(device, {})
            if fault.method in faults:
                faults[fault.method].over.set()
            faults[fault.method] = fault
        return None

    def clear(self):
        for fault in [*self._spent, *(f for faults in self._on.values() for f in faults.values())]:
            fault.over.set()
        self._on.clear()
        self._spent.clear()

    def refuses(self, device):
        return any(fault.kind == "refuse" for fault in self._on.get(device, {}).values())

    def take(self, device, method):
        """The fault that this request meets, if any; its count goes down by one."""
        faults = self._on.get(device, {})
        fault = faults.get(method) or faults.get("")
        if fault and fault.after:
            fault.after -= 1
            return None
        if fault and fault.count is not None:
            fault.count -= 1
            if not fault.count:
                del faults[fault.method]
                self._spent.append(fault)
        return fault
