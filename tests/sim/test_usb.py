# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device and a receiver on serial ports: greeting, what a host must not send, and the faults of replies."""

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

    def signed_in(self):
        host = self.greeted()
        self.assertEqual(host.call("login", password=PASSWORD), {"must_change_password": False})
        return host

    @staticmethod
    def face(state, name="usb"):
        return state["devices"]["TF-1" if name == "usb" else "TF-2"][name]

    def steer(self, path, **body):
        status, reply = self.sim.control(path, **body)
        self.assertEqual(status, 200, reply)
        return reply

    def fault(self, kind, **more):
        self.steer("/fault", where="usb", kind=kind, **more)

    def test_when_it_greets(self):
        self.fault("hello-silent", count=2)
        host = self.host()
        for _ in range(2):
            host.ctrl({"t": "hello", "streams": 1})
        self.assertEqual(host.message(3)["t"], "hello")
        host.close()
        self.wait_for(lambda s: not self.face(s)["open"])
        self.fault("hello-silent")
        with self.assertRaises(TimeoutError):
            self.host().message(3, seconds=0.3)

    def test_both_kinds_of_greeting_in_both_orders(self):
        for name in PATHS:
            for kind, order in (("hello-first", ["hello", "rx_status"]),
                                ("rx-status-first", ["rx_status", "hello"])):
                with self.subTest(name=name, kind=kind):
                    self.fault(kind)
                    host = self.host(name)
                    self.assertEqual([host.message(3)["t"], host.message(3)["t"]], order)
                    host.close()
                    self.wait_for(lambda s: not self.face(s, name)["open"])

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
                 (frame(4, b'{"id":1,"method":"login","params":{"pass":"s3cret"}}'), "not signed"),
                 (frame(2, b"x") * 60, "faster")]
        host = self.greeted()
        self.steer("/pace", pace=1)
        self.addCleanup(self.steer, "/pace", pace=20)
        for data, words in table[:-2] + table[-1:]:
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

    def test_long_texts_both_ways(self):
        host = self.signed_in()
        self.steer("/admin", device="TF-1", log_bytes=50000)
        self.assertEqual(len(host.call("getLogs")["logs"]), 50000)
        self.steer("/admin", device="TF-1", log_bytes=1 << 20)
        self.assertGreater(len(host.call("getLogs")["logs"]), 62000)
        self.steer("/admin", device="TF-1", log_bytes=0)
        self.assertEqual(host.call("getLogs"), {"logs": ""})
        self.assertEqual(host.call("login", password="x" * 5000), "invalid_credentials")

    def test_faults_of_replies(self):
        host = self.signed_in()
        self.fault("busy", method="getState", count=2)
        codes = [host.call("getState") for _ in range(3)]
        self.assertEqual(codes[:2], ["busy", "busy"])
        self.assertEqual(codes[2]["type"], "state")
        for kind, wanted in (("twice", 2), ("silent", 0), ("bad-crc", 0), ("fragments", 1),
                             ("late", 1)):
            self.fault(kind, method="getState", count=1, **({"seconds": 0.1} if kind == "late"
                                                            else {}))
            host.request("getState", {})
            texts = []
            with self.subTest(kind=kind), self.assertRaises(TimeoutError):
                while True:
                    texts.append(json.loads(host.reply(0.3)))
            self.assertEqual([t["ok"] for t in texts], [True] * wanted)
        for kind, error in (("wrong-id", AssertionError), ("garbage", ValueError),
                            ("gap", AssertionError)):
            self.fault(kind, method="getState", count=1)
            with self.subTest(kind=kind), self.assertRaises(error):
                host.call("getState")
            host = self.signed_in_again(host)
        self.fault("error", method="getStatus", code="odd", after=1)
        self.assertIsInstance(host.call("getStatus"), dict)
        self.assertEqual(host.call("getStatus"), "odd")
        self.fault("result", method="scanWifi", result={"networks": [7]})
        self.assertEqual(host.call("scanWifi"), {"networks": [7]})
        self.fault("unanswered", method="reboot")
        host.request("reboot", {})
        with self.assertRaises(EOFError):
            host.reply()

    def signed_in_again(self, host):
        host.close()
        self.wait_for(lambda s: not self.face(s)["open"])
        return self.signed_in()

    def test_wrong_wishes_get_a_sentence(self):
        table = [("/fault", {"where": "usb", "kind": "rain"}),
                 ("/fault", {"where": "usb", "kind": "busy", "seconds": 1}),
                 ("/fault", {"where": "usb", "kind": "late", "seconds": "x"}),
                 ("/admin", {"networks": [{"name": "x"}]}), ("/admin", {"checks": {"x": ""}}),
                 ("/admin", {"firmware": {"size": 1}}),
                 ("/admin", {"firmware": {"stages": [["x"]]}}),
                 ("/admin", {"chip": {"fails_in": "x"}}), ("/pace", {"pace": 0}),
                 ("/usb/pipe", {"send": 1, "reset": True}), ("/usb/pipe", {}),
                 ("/ble", {"lose": True}), ("/pairing", {"device": "TF-1"}),
                 ("/usb/receiver", {"key": "x"}), ("/usb/receiver", {"hide": [[]]}),
                 ("/usb/stream", {"id": 9, "close": True}), ("/usb/frame", {"hex": "zz"}),
                 ("/usb/replug", {"device": "TF-2", "receiver": False}),
                 ("/cloud", {"target": "rain"}), ("/cloud", {"target": "sink", "send": 1})]
        for path, body in table:
            with self.subTest(path=path, body=body):
                status, reply = self.sim.control(path, **body)
                self.assertIn(status, (400, 404, 409))
                self.assertTrue(reply["error"].endswith("."), reply)


if __name__ == "__main__":
    unittest.main()
