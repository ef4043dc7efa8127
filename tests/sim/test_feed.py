# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's feed: the lines it sends, the clients it refuses, and its faults."""

import time
import unittest

from support import SimulatorTest


class FeedTest(SimulatorTest):
    options = ("--manual", "--device", "TF-1001", "--device", "TF-1002",
               "--token", "TF-1001=open-sesame")

    def live(self, **named):
        client = self.client(**named)
        self.assertEqual(client.message(), {"type": "auth_ok"})
        return client

    def fault(self, kind):
        status, reply = self.sim.control("/fault", where="feed", device="TF-1001", kind=kind)
        self.assertEqual(status, 200, reply)

    def score(self, score):
        return self.sim.control("/set", fields={"home_score": score})[1]

    def shows(self, client, score):
        client.until(lambda m: m.get("fields", {}).get("home_score") == score)

    def test_state_at_once_then_changes_then_heartbeats(self):
        client = self.live()
        first = client.message()
        self.assertEqual((first["type"], first["sport"]), ("state", "basketball"))
        begun = time.monotonic_ns()
        reply = self.score(31)
        self.shows(client, 31)
        self.assertTrue(begun < reply["feed_ns"] < time.monotonic_ns())
        beat = client.until(lambda m: m["type"] == "heartbeat")
        self.assertEqual(set(beat), {"type", "seq", "ts_ms"})
        self.assertGreater(beat["seq"], first["seq"])

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
