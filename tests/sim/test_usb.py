# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device and a receiver on serial ports: what a host must not send them."""

import json
import os
import tempfile
import unittest

from support import SimulatorTest
from usb_host import UsbHost, frame

FOLDER = tempfile.TemporaryDirectory()
PATHS = {name: f"{FOLDER.name}/tty-{name}" for name in ("usb", "receiver")}
PASSWORD = "let-me-in"


class UsbTest(SimulatorTest):
    options = ("--manual", "--pace", "20", "--device", "TF-1", "--device", "TF-2",
               "--usb", f"TF-1@{PATHS['usb']}", "--receiver", f"TF-2@{PATHS['receiver']}",
               "--admin-password", f"TF-1={PASSWORD}", "--admin-password", "TF-2=quietmoose")

    def host(self, name="usb", **named):
        self.wait_for(lambda _: os.path.exists(PATHS[name]))
        host = UsbHost(PATHS[name], **named)
        self.addCleanup(self.wait_for, lambda s: not self.face(s, name)["open"])
        self.addCleanup(host.close)
        return host

    def greeted(self, name="usb"):
        host = self.host(name)
        host.message(3, lambda m: m["t"] == "hello")
        return host

    @staticmethod
    def face(state, name="usb"):
        return state["devices"]["TF-1" if name == "usb" else "TF-2"][name]

    def steer(self, path, **body):
        status, reply = self.sim.control(path, **body)
        self.assertEqual(status, 200, reply)
        return reply

    def test_what_the_host_must_not_send(self):
        stream = bytes([1, 2])
        table = [(b"plain text", "no frame"), (frame(4, b"{}")[:-1] + b"?", "no frame"),
                 (frame(1, b"{}"), "never sends"), (frame(7, b""), "never sends"),
                 (frame(2, b"x" * 513), "512"), (frame(3, b"[]"), "compact"),
                 (frame(3, b'{"t": "ping"}'), "compact"), (frame(3, b'{"t":"pong"}'), "no host"),
                 (frame(3, b'{"t":"hello"}'), "hello is not"), (frame(5, b"\1"), "shorter"),
                 (frame(5, stream), "never opened"), (frame(4, b"\x10\0\1data"), "out of order"),
                 (frame(4, b'{"method":"login","params":{}}'), "id, method and params"),
                 (frame(4, b'{"id":0,"method":"x","params":{}}'), "above 0"),
                 (frame(4, b'{"id":1, "method":"x","params":{}}'), "compact"),
                 (frame(2, b"x") * 60, "faster")]
        host = self.greeted()
        self.steer("/pace", pace=1)
        self.addCleanup(self.steer, "/pace", pace=20)
        for data, words in table:
            with self.subTest(words=words, data=data[:40]):
                host.write(data)
                self.wait_for(lambda s: s["violations"])
                self.assertIn(words, self.sim.violations()[0])
        for method, params in (("login", {"pass": "s3cret"}), ("login", {"password": 5}),
                               ("s3cret", {})):
            self.assertIn(host.call(method, **params), ("bad_request", "unknown_method"))
            self.assertNotIn("s3cret", json.dumps(self.sim.violations()))
        early = self.host("receiver", hello=None)
        early.write(frame(4, b"{}"))
        self.wait_for(lambda s: s["violations"])
        self.assertIn("before the hello", self.sim.violations()[0])

    def test_wrong_wishes_get_a_sentence(self):
        table = [("/fault", {"where": "portal", "kind": ["hang"]}),
                 ("/fault", {"where": "portal", "kind": "refuse", "path": "/x"}),
                 ("/fault", {"where": "portal", "kind": "status", "status": 99}),
                 ("/fault", {"where": "portal", "kind": "hang", "count": True}),
                 ("/fault", {"where": "feed", "kind": "hang"}), ("/fault", {"where": "roof"}),
                 ("/fault", {"where": "device", "device": "no", "kind": "gone"}),
                 ("/set", {"fields": 3}), ("/step", {"count": 0}), ("/session", {}),
                 ("/sent?revision=x", {}), ("/nothing", {"a": 1}),
                 ("/fault", {"where": "usb", "kind": "busy", "seconds": 1}),
                 ("/fault", {"where": "usb", "kind": "late", "seconds": "x"}),
                 ("/admin", {"networks": [{"name": "x"}]}), ("/admin", {"checks": {"x": ""}}),
                 ("/admin", {"firmware": {"stages": [["x"]]}}), ("/pace", {"pace": 0}),
                 ("/usb/pipe", {"send": 1, "reset": True}), ("/ble", {"lose": True}),
                 ("/pairing", {"device": "TF-1"}), ("/usb/receiver", {"hide": [[]]}),
                 ("/usb/stream", {"id": 9, "close": True}), ("/usb/frame", {"hex": "zz"}),
                 ("/usb/replug", {"device": "TF-2", "receiver": False}),
                 ("/cloud", {"target": "sink", "send": 1})]
        for path, body in table:
            with self.subTest(path=path, body=body):
                status, reply = self.sim.control(path, **body)
                self.assertIn(status, (400, 404, 409))
                self.assertTrue(reply["error"].endswith("."), reply)


if __name__ == "__main__":
    unittest.main()
