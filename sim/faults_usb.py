# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The faults that are on at the USB ports."""

from dataclasses import dataclass

from faults import FaultError

_RPC = {"method", "count", "after"}
KINDS = {   # kind -> the part that breaks, the keys that it takes beside where, kind and device
    "hello-silent": ("hello", {"count"}),
    "hello-late": ("hello", {"count", "seconds"}),
    "hello-first": ("order", set()),
    "rx-status-first": ("order", set()),
    "busy": ("rpc", _RPC), "silent": ("rpc", _RPC), "twice": ("rpc", _RPC),
    "wrong-id": ("rpc", _RPC), "garbage": ("rpc", _RPC), "bad-crc": ("rpc", _RPC),
    "gap": ("rpc", _RPC), "fragments": ("rpc", _RPC | {"bytes"}),
    "late": ("rpc", _RPC | {"seconds"}),
    "error": ("rpc", _RPC | {"code", "message"}),
    "result": ("rpc", _RPC | {"result"}),
    "unanswered": ("rpc", _RPC),
    "rx-silent": ("rx", {"count"}), "rx-refuse": ("rx", {"count", "message"}),
    "rx-error": ("rx", {"count", "message"}), "rx-as-reboot": ("rx", {"count"}),
    "no-credit": ("credit", set()), "slow-credit": ("credit", set()),
    "excess-credit": ("credit", set()),
    "noise": ("line", set()), "deaf": ("line", set()), "unplug": ("line", set()),
}


@dataclass
class UsbFault:
    kind: str
    method: str = ""       # empty: any
    after: int = 0         # so many times it doesn't happen yet
    count: int = None      # how often it still happens; None: until it is cleared
    seconds: float = 2.0
    bytes: int = 64        # data in each fragment
    code: str = "device_error"
    message: str = None
    result: object = None

    def shown(self):
        told = {"kind": self.kind, "method": self.method or None, "count": self.count,
                "after": self.after or None,
                "seconds": self.seconds if self.kind in ("late", "hello-late") else None}
        return {key: value for key, value in told.items() if value is not None}


def parse(wish):
    kind = wish.get("kind")
    if not isinstance(kind, str) or kind not in KINDS:
        raise FaultError(f"The kinds of faults on USB are {', '.join(KINDS)}.")
    values = {key: value for key, value in wish.items() if key not in ("where", "device")}
    extra = set(values) - KINDS[kind][1] - {"kind"}
    if extra:
        raise FaultError(f"The fault {kind} does not take {', '.join(sorted(extra))}.")
    for key, types, low, high in (("count", (int,), 1, 10**6),
                                  ("after", (int,), 0, 10**6), ("bytes", (int,), 1, 2045),
                                  ("seconds", (int, float), 0, 3600)):
        value = values.get(key, low)
        if type(value) not in types or not low <= value <= high:
            raise FaultError(f"{key} must be a number from {low} to {high}.")
    for key in ("method", "code", "message"):
        if not isinstance(values.get(key, ""), str):
            raise FaultError(f"{key} must be a text.")
    return UsbFault(**values)


class UsbFaults:
    """The faults of each device: one for each thing that can be broken, and method."""

    def __init__(self):
        self._on = {}      # device id -> {(the part that breaks, method): UsbFault}

    def shown(self):
        return {device: [fault.shown() for fault in faults.values()]
                for device, faults in self._on.items() if faults}

    def set(self, wish, ids):
        for device in ids:
            fault = parse(wish)
            self._on.setdefault(device, {})[KINDS[fault.kind][0], fault.method] = fault

    def clear(self):
        self._on.clear()

    def kind(self, device, what):
        fault = self._on.get(device, {}).get((what, ""))
        return fault.kind if fault else None

    def take(self, device, what, method=""):
        """The fault that this one time meets, if any; its count goes down by one."""
        faults = self._on.get(device, {})
        key = next((key for key in ((what, method), (what, "")) if key in faults), None)
        if not key:
            return None
        fault = faults[key]
        if fault.after:
            fault.after -= 1
            return None
        if fault.count is not None:
            fault.count -= 1
            if not fault.count:
                del faults[key]
        return fault
