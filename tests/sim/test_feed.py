# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The clients that a device's feed refuses."""

import unittest

from support import SimulatorTest


class FeedTest(SimulatorTest):
    options = ("--manual", "--token", "TF-1001=open-sesame")

    def test_first_lines_that_break_the_format(self):
        right = b'{"type":"auth","token":"open-sesame"}\r\n'
        table = [right[:-2] + b"\n", b'{"type": "auth", "token": "open-sesame"}\r\n',
                 b'{"type":"auth","token":"open-sesame","v":1}\r\n', b'["auth"]\r\n', b"\r\n",
                 b'{"type":"hello","token":"open-sesame"}\r\n', b"\xff\xfe\r\n",
                 b'{"type":"auth","token":7}\r\n', b"x" * 70000 + b"\r\n"]
        for line in table:
            with self.subTest(line=line[:60]):
                self.assertEqual(self.client(line).message(), {"type": "auth_fail"})
                self.assertEqual(len(self.sim.violations()), 1)
        client = self.client(right + b" ")
        self.wait_for(lambda state: state["violations"])
        self.assertIn("more than its auth line", self.sim.violations()[0])
        self.assertTrue(list(iter(client.line, b"")))


if __name__ == "__main__":
    unittest.main()
