# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A venue's accounts, devices and sign-ins, and the secrets that belong to them."""

import hmac
import secrets
import time
from collections import deque
from dataclasses import dataclass, field

from games import Game
from net import log

VERSION = 1
FIRMWARE = "2.4.0"
KEPT = 200


class SentLog:
    """When each revision first left over one carrier, in nanoseconds of the monotonic clock."""

    def __init__(self):
        self._entries = deque(maxlen=8192)

    def add(self, revision, nanoseconds):
        if not self._entries or revision > self._entries[-1][0]:
            self._entries.append((revision, nanoseconds))

    def find(self, revision):
        """The moment for this revision or the next newer one that was sent, else None."""
        return next((at for number, at in self._entries if number >= revision), None)


@dataclass
class Account:
    email: str
    password: str
    code: str = ""
    role: str = "owner"


@dataclass
class Device:
    id: str
    nickname: str
    address: str
    token: str
    passkey: str
    admin_password: str
    claim_code: str
    share_token: str
    game: Game
    firmware: str = FIRMWARE
    port: int = 0
    sport: str = ""
    fields: dict = field(default_factory=dict)
    online: bool = True
    raw: dict = None
    config: dict = field(default_factory=dict)
    seq: int = 1
    ts_ms: int = 0
    revision: int = 0
    feed_auths: int = 0
    feed_connects: int = 0
    feed_clients: int = 0
    feed_sent: SentLog = field(default_factory=SentLog)
    portal_sent: SentLog = field(default_factory=SentLog)
    usb_sent: SentLog = field(default_factory=SentLog)

    def envelope(self):
        """The state as the device itself tells it, on any carrier."""
        if self.raw is not None:
            return self.raw
        return {"type": "state", "seq": self.seq, "ts_ms": self.ts_ms, "v": VERSION,
                "sport": self.sport, "fw_version": self.firmware, "fields": self.fields}


def now_ms():
    return time.time_ns() // 1_000_000


def same_secret(given, right):
    """Compares in constant time. A client may send lone surrogates, which plain UTF-8 lacks."""
    return hmac.compare_digest(given.encode("utf-8", "surrogatepass"),
                               right.encode("utf-8", "surrogatepass"))


class Venue:
    def __init__(self):
        self.accounts = {}
        self.devices = {}
        self.sessions = {}     # cookie -> email
        self.challenges = {}   # challenge id -> email, or None once it has been used
        self.secrets = {}      # a dict for its order
        self.violations = []
        self.revision = 0
        self.on_change = None  # called with the device; returns when each carrier's write began
        self._owners = deque(maxlen=8192)

    def secret(self, value):
        """Remembers a secret, so that a test can look for it where it must not be."""
        self.secrets[value] = True
        return value

    def violation(self, text):
        """A client broke the wire format. The text names the rule and never quotes a value."""
        log("VIOLATION " + text)
        if len(self.violations) < KEPT:
            self.violations.append(text)

    def add_account(self, email, password, code=""):
        self.accounts[email] = Account(email, self.secret(password), code and self.secret(code))

    def add_device(self, device_id, nickname, address, token, script, password=None):
        device = Device(
            id=device_id, nickname=nickname, address=address,
            token=self.secret(token or secrets.token_urlsafe(24)),
            passkey=self.secret(f"{secrets.randbelow(10**6):06d}"),
            admin_password=self.secret(password or secrets.token_urlsafe(9)),
            claim_code=self.secret(secrets.token_hex(4).upper()),
            share_token=self.secret(secrets.token_urlsafe(16)),
            game=Game(script), sport=script.sport, fields=dict(script.start), ts_ms=now_ms())
        self.devices[device_id] = device
        return device

    def open_session(self, email, cookie=None):
        cookie = self.secret(cookie or secrets.token_urlsafe(32))
        self.sessions[cookie] = email
        return cookie

    def open_challenge(self, email):
        challenge = self.secret(secrets.token_urlsafe(16))
        self.challenges[challenge] = email
        return challenge

    def change(self, device, fields=None, sport=None, online=None, raw=None):
        """Changes a device's state, and returns when each carrier's write of it began."""
        self.revision += 1
        device.revision = self.revision
        self._owners.append((self.revision, device))
        device.fields.update(fields or {})
        device.sport = device.sport if sport is None else sport
        device.online = device.online if online is None else online
        device.raw = raw
        device.seq += 1
        device.ts_ms = now_ms()
        return self.on_change(device) if self.on_change else {}

    def owner(self, revision):
        """The device that a revision changed, or None."""
        return next((device for number, device in self._owners if number == revision), None)
