# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The portal: what it answers, what it refuses, and how it fails when asked to."""

import unittest

from support import HEADERS, SimulatorTest


def without(name):
    return {key: value for key, value in HEADERS.items() if key != name}


class PortalTest(SimulatorTest):
    options = ("--manual", "--account", "crew@example.com:score:board",
               "--account", "two@example.com:steps:123456",
               "--device", "TF-1001=Main gym", "--device", "A/B c")

    def test_sign_in_with_and_without_a_second_step(self):
        def call(path, **body):
            return self.sim.portal("POST", path, body, without("Cookie"))

        wrong = call("/auth/login", email="crew@example.com", password="score")
        self.assertEqual(wrong[:2], (401, {"detail": {"error": "invalid_credentials"}}))
        status, reply, cookie = call("/auth/login", email="crew@example.com", password="score:board")
        self.assertEqual((status, reply["user"]["email"]), (200, "crew@example.com"))
        for flag in ("Max-Age=", "Path=/", "HttpOnly", "Secure"):
            self.assertIn(flag, cookie)
        _, first, cookie = call("/auth/login", email="two@example.com", password="steps")
        self.assertEqual((first["totp_required"], cookie), (True, None))
        for code, status in (("000000", 401), ("123456", 200), ("123456", 401)):
            self.assertEqual(call("/auth/login/totp", challenge_id=first["challenge_id"], code=code)[0], status)

    def test_state_follows_the_device_and_its_id_may_hold_anything(self):
        self.sim.control("/set", device="A/B c", fields={"home_score": 41})
        status, reply, _ = self.sim.portal("GET", "/devices/A%2FB%20c/state")
        self.assertEqual((status, reply["type"], reply["online"], reply["fields"]["home_score"]),
                         (200, "state", True, 41))
        _, other, _ = self.sim.portal("GET", "/devices/TF-1001/state")
        self.assertEqual(other["fields"]["home_score"], 0)
        raw = {"type": "odd", "fields": [1]}
        self.sim.control("/set", device="A/B c", raw=raw)
        self.assertEqual(self.sim.portal("GET", "/devices/A%2FB%20c/state")[1], raw)

    def test_commands_reach_the_device_that_is_there(self):
        def ask(path, **body):
            return self.sim.portal("POST", f"/devices/TF-1001/{path}", body)[:2]

        choice = {"manufacturer": "oes", "model": "ISC9000", "sport": "hockey", "input_type": "rs485"}
        self.assertEqual(ask("config", config=choice), (200, {"ok": True}))
        admin = self.sim.state()["devices"]["TF-1001"]["admin"]
        self.assertEqual(admin["controller"], choice)
        data = ask("cmd/get_status", args={})[1]["data"]
        self.assertEqual((data["model"], type(data["network"])), ("ISC9000", dict))
        self.assertTrue(ask("cmd/ota_check", args={})[1]["data"]["update_available"])
        self.sim.control("/fault", where="device", kind="offline")
        self.sim.control("/pace", pace=100)
        for path, body in (("config", {"config": choice}), ("cmd/get_status", {"args": {}})):
            self.assertEqual(ask(path, **body)[0], 504)
        self.assertTrue(ask("cmd/reboot", args={})[1]["queued"])
        self.assertEqual(self.sim.state()["portal"]["queued"], ["TF-1001"])
        self.sim.control("/clear")
        self.wait_for(lambda s: s["devices"]["TF-1001"]["admin"]["restarts"] == 1)

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


class PortalFaultTest(SimulatorTest):
    def fault(self, kind, **more):
        status, reply = self.sim.control("/fault", where="portal", kind=kind, **more)
        self.assertEqual(status, 200, reply)

    def devices(self, timeout=5):
        return self.sim.portal("GET", "/devices", timeout=timeout)

    def test_a_fault_keeps_to_its_path_and_its_count(self):
        self.fault("status", status=502, path="/devices/", count=2)
        self.fault("garbage", path="/auth")
        self.assertEqual(self.devices()[0], 200)
        statuses = [self.sim.portal("GET", "/devices/TF-1001/state")[0] for _ in range(3)]
        self.assertEqual(statuses, [502, 502, 200])
        self.assertIsInstance(self.sim.portal("GET", "/auth/me")[1], bytes)

    def test_wrong_wishes_get_a_sentence(self):
        table = [("/fault", {"where": "portal", "kind": ["hang"]}),
                 ("/fault", {"where": "portal", "kind": "refuse", "path": "/x"}),
                 ("/fault", {"where": "portal", "kind": "status", "status": 99}),
                 ("/fault", {"where": "portal", "kind": "hang", "count": True}),
                 ("/fault", {"where": "feed", "kind": "hang"}), ("/fault", {"where": "roof"}),
                 ("/fault", {"where": "device", "device": "no", "kind": "gone"}),
                 ("/set", {"fields": 3}), ("/step", {"count": 0}), ("/session", {}),
                 ("/sent?revision=x", {}), ("/nothing", {"a": 1})]
        for path, body in table:
            with self.subTest(path=path, body=body):
                status, reply = self.sim.control(path, **body)
                self.assertIn(status, (400, 404))
                self.assertTrue(reply["error"].endswith("."), reply)


if __name__ == "__main__":
    unittest.main()
