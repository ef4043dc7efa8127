# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The update server: what it objects to."""

import contextlib
import http.client
import pathlib
import tempfile
import unittest

from support import PATIENCE, SimulatorTest, blind_tls

HEADERS = {"User-Agent": "Tallyforge-OBS/1.0.1 (linux-x86_64)", "Accept": "application/json"}


class UpdatesTest(SimulatorTest):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        pathlib.Path(folder.name, "latest.json").write_text("{}")
        cls.options = ("--manual", "--updates", folder.name, "--updates-port", "0")
        super().setUpClass()

    def status(self, path, headers):
        host = self.sim.ready["updates"].split("/")[2]
        connection = http.client.HTTPSConnection(host, timeout=PATIENCE, context=blind_tls())
        with contextlib.closing(connection):
            connection.request("GET", path, headers=headers)
            return connection.getresponse().status

    def test_what_an_updater_never_sends_is_a_violation(self):
        for headers in ({"User-Agent": "Mozilla/5.0"}, {"User-Agent": "Tallyforge-OBS/1.0.1"},
                        {"Accept": "*/*"}, {"Cookie": "a=b"}):
            with self.subTest(headers=headers):
                self.assertEqual(self.status("/downloads/obs/latest.json", HEADERS | headers), 200)
                self.assertEqual(len(self.sim.violations()), 1)


if __name__ == "__main__":
    unittest.main()
