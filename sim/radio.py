# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's radio link to a wireless receiver, and the receiver that may hear it."""

import re
import secrets

MAC = re.compile(r"[0-9A-Fa-f]{2}(:[0-9A-Fa-f]{2}){5}")
KEY = re.compile(r"[0-9A-Fa-f]{32}")
REPORT_KEYS = ("configured", "link", "rssi", "channel", "fw")   # of a receiver's report


def new_key():
    return secrets.token_hex(16)


class Radio:
    """The settings are kept at once; the role is taken up at the next restart."""

    def __init__(self, secret):
        self._secret = secret
        self.available = True
        self.role = "off"
        self.configured_role = "off"
        self.peer_mac = ""
        self.key = ""
        self.start_error = ""
        self.active = None        # the receiver and the key that are in use since it started
        self.broken = ""          # why it won't start, if a test wants that

    def shown(self):
        if not self.available:
            return {}
        return {"role": self.role, "configured_role": self.configured_role,
                "peer_mac": self.peer_mac, "key_set": bool(self.key),
                "start_error": self.start_error}

    def set(self, role, peer_mac, key, generate):
        """Returns the reply; raises ValueError with a sentence for the user."""
        if role == "off":
            self.configured_role = "off"
            return {}
        peer_mac, key = peer_mac or self.peer_mac, key or self.key
        if not MAC.fullmatch(peer_mac):
            raise ValueError("The receiver's address must look like aa:bb:cc:dd:ee:ff.")
        if not generate and not KEY.fullmatch(key):
            raise ValueError("The pairing key must have 32 hexadecimal digits.")
        self.configured_role, self.peer_mac = "tx", peer_mac.lower()
        self.key = self._secret(new_key() if generate else key).lower()
        return {"key": self.key} if generate else {}

    def restart(self):
        self.start_error = ""
        self.role = self.configured_role
        if self.role == "tx" and self.broken:
            self.role, self.start_error = "off", self.broken
        self.active = (self.peer_mac, self.key) if self.role == "tx" else None

    def reset(self):
        self.configured_role, self.peer_mac, self.key = "off", "", ""


class Receiver:
    """The receiver's own memory. It hears a device that transmits to it with its key."""

    def __init__(self, secret, admin):
        self._secret = secret
        self._admin = admin
        self.mac = "02:" + ":".join(f"{byte:02x}" for byte in secrets.token_bytes(5))
        self.key = secret(new_key())
        self.channel = 6
        self.firmware = "1.3.0"
        self.hidden = []          # keys of its report that it leaves out
        admin.radio.set("tx", self.mac, self.key, False)
        admin.radio.restart()
        admin.wifi.restart(True)

    @property
    def linked(self):
        return bool(self.key) and not self._admin.power.down and \
            self._admin.radio.active == (self.mac, self.key)

    def status(self):
        values = (bool(self.key), self.linked, -61 if self.linked else None, self.channel,
                  self.firmware)
        return {"t": "rx_status"} | {key: value for key, value in zip(REPORT_KEYS, values)
                                     if value is not None and key not in self.hidden}

    def take_key(self, key):
        """An empty key: it is paired with no device."""
        self.key = key and self._secret(key).lower()

    def set(self, key, generate, channel):
        """Returns the new key if one was made; raises ValueError with a sentence."""
        if key is not None and not KEY.fullmatch(key):
            raise ValueError("The key must have 32 hexadecimal digits")
        if channel is not None and channel > 13:
            raise ValueError("The channel must be from 1 to 13")
        if generate or key is not None:
            self.take_key(new_key() if generate else key)
        self.channel = channel or self.channel
        return self.key if generate else None
