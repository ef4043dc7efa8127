# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The update server: what it objects to, and its faults."""

import http.client
import json
import pathlib
import tempfile
import unittest

from support import PATIENCE, SimulatorTest, blind_tls

PACKAGE, LATEST = "/downloads/obs/new.zip", "/downloads/obs/latest.json"
HEADERS = {"User-Agent": "Tallyforge-OBS/1.0.1 (linux-x86_64)", "Accept": "application/json"}
BYTES = bytes(range(256)) * 1000   # more than one piece
MANIFEST = {"packages": {"linux-x86_64": {"sha256": "0f" * 32, "size": len(BYTES)}}}


class UpdatesTest(SimulatorTest):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        top = pathlib.Path(folder.name)
        (top / "private.json").write_text("{}")
        files = top / "files"
        files.mkdir()
        (files / "latest.json").write_text(json.dumps(MANIFEST))
        (files / "new.zip").write_bytes(BYTES)
        cls.options = ("--manual", "--updates", str(files), "--updates-port", "0")
        super().setUpClass()

    def open(self, path, headers=None, timeout=PATIENCE):
        host = self.sim.ready["updates"].split("/")[2]
        connection = http.client.HTTPSConnection(host, timeout=timeout, context=blind_tls())
        self.addCleanup(connection.close)
        connection.request("GET", path, headers=HEADERS if headers is None else headers)
        return connection.getresponse()

    def get(self, path, headers=None):
        reply = self.open(path, headers)
        return reply.status, reply.read()

    def fault(self, kind, **more):
        status, reply = self.sim.control("/fault", where="updates", kind=kind, **more)
        self.assertEqual(status, 200, reply)

    def last(self):
        return self.sim.state()["updates"]["requests"][-1]

    def test_what_an_updater_never_sends_is_a_violation(self):
        for headers in ({"User-Agent": "Mozilla/5.0"}, {"User-Agent": "Tallyforge-OBS/1.0.1"},
                        {"Accept": "*/*"}, {"Cookie": "a=b"}):
            with self.subTest(headers=headers):
                self.assertEqual(self.get(LATEST, HEADERS | headers)[0], 200)
                self.assertEqual(len(self.sim.violations()), 1)

    def test_a_manifest_may_lie(self):
        for kind, key, wrong in (("wrong-hash", "sha256", "f0" * 32),
                                 ("wrong-size", "size", len(BYTES) + 1)):
            self.fault(kind, path=LATEST)
            entry = json.loads(self.get(LATEST)[1])["packages"]["linux-x86_64"]
            self.assertEqual(entry, MANIFEST["packages"]["linux-x86_64"] | {key: wrong})

    def test_answers_that_are_other_than_asked_for(self):
        self.fault("redirect", to="file:///etc/passwd", path=PACKAGE)
        self.fault("status", status=503, body="full", path=LATEST, count=1)
        reply = self.open(PACKAGE)
        self.assertEqual((reply.status, reply.headers["Location"]), (302, "file:///etc/passwd"))
        self.assertEqual(self.get(LATEST), (503, b"full"))
        self.assertEqual(self.get(LATEST)[0], 200)
        self.fault("cut", path=PACKAGE)
        with self.assertRaises(http.client.IncompleteRead) as caught:
            self.get(PACKAGE)
        self.assertEqual(caught.exception.partial, BYTES[:len(BYTES) // 2])
        self.fault("refuse")
        with self.assertRaises(OSError):
            self.get(LATEST)


if __name__ == "__main__":
    unittest.main()
