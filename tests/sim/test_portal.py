# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The portal: what it refuses."""

import unittest

from support import HEADERS, SimulatorTest


def without(name):
    return {key: value for key, value in HEADERS.items() if key != name}


class PortalTest(SimulatorTest):
    options = ("--manual", "--account", "crew@example.com:score:board",
               "--account", "two@example.com:steps:123456",
               "--device", "TF-1001=Main gym", "--device", "A/B c")

    def test_requests_that_break_the_format_are_refused_and_recorded(self):
        login = {"email": "crew@example.com", "password": "x"}
        table = [
            ("GET", "/devices", None, without("Content-Type"), 400),
            ("GET", "/devices", None, HEADERS | {"Accept": "*/*"}, 400),
            ("GET", "/devices", None, HEADERS | {"User-Agent": "Mozilla/5.0"}, 400),
            ("GET", "/devices", "{}", HEADERS, 400),
            ("POST", "/devices", None, HEADERS, 405),
            ("GET", "/nowhere", None, HEADERS, 404),
            ("GET", "/devices/A/B/state", None, HEADERS, 404),
            ("POST", "/auth/login", {"user": "a", "password": "b"}, HEADERS, 400),
            ("POST", "/auth/login", login | {"more": 1}, HEADERS, 400),
            ("POST", "/auth/login", login | {"email": " crew@example.com"}, HEADERS, 400),
            ("POST", "/auth/login", login | {"password": 7}, HEADERS, 400),
            ("POST", "/auth/login", "[", HEADERS, 400),
            ("POST", "/auth/login/totp", {"challenge_id": "made-up", "code": "1"}, HEADERS, 400),
            ("POST", "/devices/TF-1001/cmd/reboot", {}, HEADERS, 400),
            ("POST", "/devices/link", {"device_id": "x", "via": "lan"}, HEADERS, 400),
            ("POST", "/devices/link", {"device_id": "TF-1001", "via": "usb", "code": ""},
             HEADERS, 400),
            ("PUT", "/devices/TF-1001/pairing", {"admin_password": ""}, HEADERS, 400)]
        for method, path, body, headers, status in table:
            with self.subTest(method=method, path=path, body=body):
                self.assertEqual(self.sim.portal(method, path, body, headers)[0], status)
                found = self.sim.violations()
                self.assertEqual(len(found), 1)
                self.assertTrue(found[0].startswith(f"portal {method} /"), found)


if __name__ == "__main__":
    unittest.main()
