# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's local HTTP interface: its routes, its sign-in, what it objects to, and its faults."""

import http.client
import json
import unittest

from support import PATIENCE, Simulator, SimulatorTest

JSON, FORM = "application/json", "application/x-www-form-urlencoded"
SIGN_IN = b'{"password":"open-the-gym"}'


class LanTest(SimulatorTest):
    options = ("--manual", "--lan-port", "0", "--pace", "20", "--admin-password",
               "TF-1001=open-the-gym")

    def setUp(self):
        self.headers = {"Accept": JSON}
        status, reply, headers = self.ask("POST", "/login", SIGN_IN)
        self.assertEqual((status, reply["must_change_password"]), (200, False))
        self.cookie = headers["Set-Cookie"].split(";")[0]
        self.headers |= {"Cookie": self.cookie, "X-CSRF-Token": reply["csrf_token"]}

    def ask(self, verb, path, body=None, kind=JSON, timeout=PATIENCE, **changed):
        headers = self.headers | ({"Content-Type": kind} if body is not None and kind else {})
        for name, value in changed.items():
            headers[name.replace("_", "-")] = value
        headers = {name: value for name, value in headers.items() if value is not None}
        host = self.sim.ready["devices"][0]["lan"].rpartition("/")[2]
        connection = http.client.HTTPConnection(host, timeout=timeout)
        self.addCleanup(connection.close)
        connection.request(verb, path, body, headers)
        reply = connection.getresponse()
        data = reply.read()
        return reply.status, json.loads(data) if data[:1] == b"{" else data, reply.headers

    def restarts(self):
        return self.sim.state()["devices"]["TF-1001"]["admin"]["restarts"]

    def test_every_route_answers_whom_it_knows_and_nobody_else(self):
        before = self.restarts()
        choice = self.ask("GET", "/api/controller/config")[1]
        posts = [("/api/auth/api-token", b"{}"), ("/api/controller/config", json.dumps(
                     choice, separators=(",", ":")).encode()),
                 ("/configure", b"ssid=Venue&pass=courtside-7"),
                 ("/api/device-id", b'{"device_id":"B"}'), ("/api/provision", b"{}"),
                 ("/api/mqtt/broker", b'{"host":"h"}'),
                 ("/ota/apply", b"{}"), ("/api/system/reboot", b"{}")]
        for path in ("/api/status", "/api/network-test", "/api/settings", "/api/controller/list",
                     "/scan", "/state", "/ota/check", "/ota/progress", "/api/system/c6-ota",
                     "/api/mqtt/broker", "/api/device-id", "/api/auth/ble-passkey"):
            with self.subTest(path):
                self.assertEqual(self.ask("GET", path)[0], 200)
        for path, body in posts:
            with self.subTest(path):
                kind = FORM if path == "/configure" else JSON
                self.assertEqual(self.ask("POST", path, body, kind)[0], 200)
        self.wait_for(lambda _: self.restarts() > before)
        self.assertEqual(self.ask("GET", "/api/status")[0], 401, "a restart ends all sessions")

    def test_who_is_refused(self):
        def ask(path, body=None, **changed):
            status, reply, _ = self.ask("POST" if body else "GET", path, body, **changed)
            return status, reply.get("error", reply.get("code"))
        bare = {"Cookie": None, "X_CSRF_Token": None, "Accept": None}
        self.assertEqual(ask("/api/status", **bare), (401, "unauthorized"), "the probe")
        self.assertEqual(ask("/login", b'{"password":"?"}'), (401, "invalid_credentials"))
        self.assertEqual(ask("/api/device-id", b'{"device_id":""}'), (400, "bad_request"))
        self.sim.control("/fault", where="lan", kind="renew-token")
        self.assertEqual(ask("/state"), (403, "csrf_invalid"))
        self.sim.control("/fault", where="lan", kind="expire")
        self.assertEqual(ask("/state"), (401, "unauthorized"))
        for _ in range(4):
            self.ask("POST", "/login", b'{"password":"?"}')
        self.assertEqual(ask("/login", SIGN_IN), (429, "rate_limited"))
        self.sim.control("/admin", unlock=True)

    def test_what_breaks_the_interface_is_a_violation(self):
        table = [("a path", 404, "GET", "/login/x", None, {}),
                 ("a verb", 405, "GET", "/login", None, {}),
                 ("a query", 400, "GET", "/state?x=1", None, {}),
                 ("a GET's body", 400, "GET", "/state", b"{}", {"kind": None}),
                 ("a GET's type", 400, "GET", "/state", None, {"Content_Type": JSON}),
                 ("Accept", 400, "GET", "/state", None, {"Accept": "*/*"}),
                 ("a form for JSON", 400, "POST", "/login", b"password=x", {"kind": FORM}),
                 ("JSON for a form", 400, "POST", "/configure", b"{}", {}),
                 ("half a form", 400, "POST", "/configure", b"ssid=a", {"kind": FORM}),
                 ("a key twice", 400, "POST", "/configure", b"ssid=a&ssid=b", {"kind": FORM}),
                 ("blanks", 400, "POST", "/login", b'{"password": "x"}', {}),
                 ("keys", 400, "POST", "/login", b'{"pass":"x"}', {}),
                 ("before the sign-in", 401, "GET", "/state", None,
                  {"Cookie": None, "X_CSRF_Token": None}),
                 ("no token", 400, "GET", "/api/status", None, {"X_CSRF_Token": None}),
                 ("no cookie", 400, "GET", "/api/status", None, {"Cookie": None}),
                 ("an invented token", 403, "GET", "/state", None, {"X_CSRF_Token": "x"}),
                 ("an invented cookie", 401, "GET", "/state", None, {"Cookie": "tf_device=x"}),
                 ("a cookie's attributes", 401, "GET", "/state", None,
                  {"Cookie": self.cookie + "; Path=/"})]
        for name, wanted, verb, path, body, changed in table:
            with self.subTest(name):
                self.assertEqual(self.ask(verb, path, body, **changed)[0], wanted)
                found = self.sim.violations()
                self.assertEqual(len(found), 1, found)
                self.assertNotIn(self.cookie.partition("=")[2], found[0])

    def test_faults(self):
        def fault(kind, **more):
            self.assertEqual(self.sim.control("/fault", where="lan", kind=kind, **more)[0], 200)
        for status in (204, 400, 401, 403, 404, 429, 500, 503):
            for body in ({}, {"body": ""}, {"body": {"message": "No."}}):
                fault("status", status=status, count=1, method="getState", **body)
                got, reply, _ = self.ask("GET", "/state")
                empty = status == 204 or body == {"body": ""}
                self.assertEqual((got, reply == b""), (status, empty))
        fault("garbage", count=1)
        self.assertIn(b"<html>", self.ask("GET", "/state")[1])
        for kind, error in (("cut", http.client.IncompleteRead), ("drop", OSError),
                            ("refuse", ConnectionRefusedError), ("hang", TimeoutError)):
            with self.subTest(kind):
                fault(kind)
                with self.assertRaises(error):
                    self.ask("GET", "/state", timeout=0.3)
                self.sim.control("/clear", where="lan")
        self.assertEqual(self.ask("GET", "/state")[0], 200)
        before = self.restarts()
        fault("drop", method="reboot")
        with self.assertRaises(OSError):
            self.ask("POST", "/api/system/reboot", b"{}")
        self.sim.control("/clear", where="lan")
        self.wait_for(lambda _: self.restarts() > before)
        for wish in ({"kind": "away"}, {"kind": "slow", "seconds": -1}, {"kind": "cut", "body": ""},
                     {"kind": "hang", "method": "getLogs"}):
            self.assertEqual(self.sim.control("/fault", where="lan", **wish)[0], 400)

    def test_an_address_of_version_6(self):
        sim = Simulator("--manual", "--lan-port", "0", "--device", "A@::1")
        self.addCleanup(sim.end)
        self.assertRegex(sim.ready["devices"][0]["lan"], r"^http://\[::1\]:\d+$")


if __name__ == "__main__":
    unittest.main()
