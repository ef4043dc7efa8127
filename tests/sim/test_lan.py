# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's local HTTP interface: its routes, its sign-in, and what it objects to."""

import http.client
import json
import unittest

from support import PATIENCE, SimulatorTest

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

    def send(self, verb, path, body=None, kind=JSON, timeout=PATIENCE, **changed):
        headers = self.headers | ({"Content-Type": kind} if body is not None and kind else {})
        for name, value in changed.items():
            headers[name.replace("_", "-")] = value
        headers = {name: value for name, value in headers.items() if value is not None}
        host = self.sim.ready["devices"][0]["lan"].rpartition("/")[2]
        connection = http.client.HTTPConnection(host, timeout=timeout)
        self.addCleanup(connection.close)
        connection.request(verb, path, body, headers)
        return connection

    def ask(self, *arguments, **named):
        reply = self.send(*arguments, **named).getresponse()
        data = reply.read()
        return reply.status, json.loads(data) if data[:1] == b"{" else data, reply.headers

    def fault(self, kind, **more):
        self.assertEqual(self.sim.control("/fault", where="lan", kind=kind, **more)[0], 200)

    def restarts(self):
        return self.sim.state()["devices"]["TF-1001"]["admin"]["restarts"]

    def routes(self):
        """Every route but the sign-in, with a body that it takes; the restart comes last."""
        choice = self.ask("GET", "/api/controller/config")[1] | {"input_type": "wireless"}
        settings = self.ask("GET", "/api/settings")[1]
        same = dict.fromkeys(("current_password", "new_password", "confirm_password"),
                             "open-the-gym")
        yield from (("GET", path, None) for path in (
            "/api/status", "/api/network-test", "/api/settings", "/api/controller/list",
            "/api/controller/config", "/scan", "/state", "/ota/check", "/ota/progress",
            "/api/system/c6-ota", "/api/mqtt/broker", "/api/device-id", "/api/auth/ble-passkey"))
        yield "POST", "/configure", b"ssid=Venue&pass=courtside%2D7"
        for path, body in (
                ("/api/auth/change-password", same), ("/api/auth/api-token", {}),
                ("/api/settings", choice | {key: value for key, value in settings.items()
                                            if not key.startswith("xbee")}),
                ("/api/controller/config", choice), ("/api/device-id", {"device_id": "B"}),
                ("/api/provision", {}), ("/api/mqtt/broker", {"host": "h"}),
                ("/api/system/c6-ota", {"source": "partition", "force": False}),
                ("/ota/apply", {}), ("/api/system/reboot", {})):
            yield "POST", path, json.dumps(body, separators=(",", ":")).encode()

    def test_every_route_answers_whom_it_knows_and_nobody_else(self):
        before, routes = self.restarts(), list(self.routes())
        # So that no update comes to its end, and the restart can be looked at.
        self.sim.control("/pace", pace=4)
        self.addCleanup(self.sim.control, "/pace", pace=20)
        def all_answer(wanted):
            for verb, path, body in routes:
                with self.subTest(f"{verb} {path}"):
                    kind = FORM if path == "/configure" else JSON
                    self.assertEqual(self.ask(verb, path, body, kind)[0], wanted)
        all_answer(200)
        self.wait_for(lambda state: state["devices"]["TF-1001"]["admin"]["down"])
        with self.assertRaises(ConnectionRefusedError):
            self.ask("GET", "/state")
        self.wait_for(lambda _: self.restarts() > before)
        self.assertEqual(len(self.sim.state()["devices"]["TF-1001"]["admin"]["requests"]), 25)
        all_answer(401)

    def test_who_is_refused(self):
        def ask(path, body=None, **changed):
            status, reply, _ = self.ask("POST" if body else "GET", path, body, **changed)
            return status, reply.get("error", reply.get("code"))
        bare = {"Cookie": None, "X_CSRF_Token": None, "Accept": None}
        self.assertEqual(ask("/api/status", **bare), (401, "unauthorized"), "the probe")
        self.assertEqual(ask("/login", b'{"password":"?"}'), (401, "invalid_credentials"))
        self.assertEqual(ask("/api/device-id", b'{"device_id":""}'), (400, "bad_request"))
        self.sim.control("/admin", must_change_password=True)
        for path, body in (("/api/mqtt/broker", None), ("/api/provision", b"{}")):
            self.assertEqual(ask(path, body), (403, "password_change_required"))
        self.sim.control("/admin", must_change_password=False)
        self.fault("renew-token")
        self.assertEqual(ask("/state"), (403, "csrf_invalid"))
        self.fault("expire")
        self.assertEqual(ask("/state"), (401, "unauthorized"))
        for _ in range(4):
            self.ask("POST", "/login", b'{"password":"?"}')
        self.assertEqual(ask("/login", SIGN_IN), (429, "rate_limited"))
        self.sim.control("/admin", unlock=True)

    def test_what_breaks_the_interface_is_a_violation(self):
        table = [("a path", 404, "GET", "/login/x", None, {}),
                 ("a verb", 405, "GET", "/login", None, {}),
                 ("a query", 400, "GET", "/state?x=1", None, {}),
                 ("a POST's query", 400, "POST", "/login?x=1", SIGN_IN, {}),
                 ("a header twice", 400, "GET", "/state", None, {"accept": JSON}),
                 ("a GET's body", 400, "GET", "/state", b"{}", {"kind": None}),
                 ("a GET's type", 400, "GET", "/state", None, {"Content_Type": JSON}),
                 ("Accept", 400, "GET", "/state", None, {"Accept": "*/*"}),
                 ("a form for JSON", 400, "POST", "/login", b"password=x", {"kind": FORM}),
                 ("JSON for a form", 400, "POST", "/configure", b"{}", {}),
                 ("half a form", 400, "POST", "/configure", b"ssid=a", {"kind": FORM}),
                 ("a stray %", 400, "POST", "/configure", b"ssid=a&pass=%z", {"kind": FORM}),
                 ("a bare blank", 400, "POST", "/configure", b"ssid=a b&pass=", {"kind": FORM}),
                 ("a key twice", 400, "POST", "/configure", b"ssid=a&ssid=b", {"kind": FORM}),
                 ("blanks", 400, "POST", "/login", b'{"password": "x"}', {}),
                 ("keys", 400, "POST", "/login", b'{"pass":"x"}', {}),
                 ("before the sign-in", 401, "GET", "/state", None,
                  {"Cookie": None, "X_CSRF_Token": None}),
                 ("a status before the sign-in", 401, "GET", "/api/status", None,
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


if __name__ == "__main__":
    unittest.main()
