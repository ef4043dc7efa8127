# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's local HTTP interface: what it objects to."""

import contextlib
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

    def ask(self, verb, path, body=None, kind=JSON, **changed):
        headers = self.headers | ({"Content-Type": kind} if body is not None and kind else {})
        headers |= {name.replace("_", "-"): value for name, value in changed.items()}
        host = self.sim.ready["devices"][0]["lan"].rpartition("/")[2]
        connection = http.client.HTTPConnection(host, timeout=PATIENCE)
        with contextlib.closing(connection):
            connection.request(verb, path, body, {name: value for name, value in headers.items() if value is not None})
            reply = connection.getresponse()
            data = reply.read()
            return reply.status, json.loads(data) if data[:1] == b"{" else data, reply.headers

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
