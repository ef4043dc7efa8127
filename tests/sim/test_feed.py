# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's feed: the lines it sends, the clients it refuses, and its faults."""

import json
import os
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

    def test_lost_connections(self):
        for kind in ("drop", "reset", "away", "late-auth-fail"):
            with self.subTest(kind=kind):
                client = self.live()
                client.message()
                self.fault(kind)
                if kind == "reset":
                    # Python's TLS takes a reset for an ordinary end, so look below it.
                    with self.assertRaises(ConnectionResetError):
                        while os.read(client.socket.fileno(), 4096):
                            pass
                else:
                    rest = list(iter(client.line, b""))
                    self.assertEqual(b'"auth_fail"' in b"".join(rest), kind == "late-auth-fail")
                self.sim.control("/clear")
                self.live()

    def test_lines_split_joined_and_between_garbage(self):
        self.fault("split")
        client = self.live()
        self.score(21)
        self.shows(client, 21)
        self.fault("join")
        client.socket.settimeout(5)
        self.assertIsNone(self.score(22)["feed_ns"])
        self.shows(client, 22)
        self.fault("garbage")
        self.score(23)
        while not client.line().startswith(b"%%"):
            pass
        array, empty, not_utf8 = client.line(), client.line(), client.line()
        self.assertIsInstance(json.loads(array), list)
        self.assertEqual(empty.strip(), b"")
        self.assertRaises(UnicodeDecodeError, not_utf8.decode)
        self.assertIn(client.message()["type"], ("state", "heartbeat"))


if __name__ == "__main__":
    unittest.main()
