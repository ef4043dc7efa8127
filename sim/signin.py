# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""How a device lets its users in: its password, the lock, each connection's sign-in."""

from venue import same_secret

FACTORY_PASSWORD = "quietmoose"
LENGTH = 8
WRONG_LIMIT = 5            # wrong passwords in a row, after which none is taken for a while
LOCKED_SECONDS = 60


class Refused(Exception):
    """The device says no, with a code for the program and a sentence for the user."""

    def __init__(self, code, message):
        super().__init__(message)
        self.code = code


class Session:
    """One connection's sign-in; a restart ends it."""

    def __init__(self, carrier):
        self.carrier = carrier     # "usb", "receiver", "ble" or "lan"
        self.signed_in = False


class Password:
    def __init__(self, secret, clock, value):
        self._secret = secret
        self._clock = clock
        self.set(value)
        self.unlock()

    def set(self, value):
        self.value = self._secret(value)
        self.must_change = value == FACTORY_PASSWORD

    def unlock(self):
        self._wrong, self._locked_until = 0, 0.0

    def check_lock(self):
        """Refuses any password for a while after too many wrong ones."""
        if self._clock.now() < self._locked_until:
            raise Refused("rate_limited",
                          "Too many wrong passwords. Wait a minute, then try again.")

    def check(self, given):
        if not same_secret(given, self.value):
            self._wrong += 1
            if self._wrong >= WRONG_LIMIT:
                self._wrong, self._locked_until = 0, self._clock.now() + LOCKED_SECONDS
            raise Refused("invalid_credentials", "The password is wrong.")
        self.unlock()

    def change(self, current, new):
        if not same_secret(current, self.value):
            raise Refused("bad_password", "The current password is wrong.")
        if len(new) < LENGTH or new.lower() == FACTORY_PASSWORD:
            raise Refused("weak_password",
                          "Use at least 8 characters, and not the factory password.")
        self.set(new)
        self.must_change = False
