# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The Bluetooth helper between a plug-in's port and a device of the simulator."""

import base64
import json
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "sim"))

from support import Simulator
from test_helper import Plugin

SIZE = 244


class Host:
    """A plug-in's side: fragments of requests, and of replies with either header."""

    def __init__(self, plugin):
        self.plugin = plugin
        self.headers = set()
        self.asked = 0

    def call(self, method, **params):
        self.asked += 1
        text = json.dumps({"id": self.asked, "method": method, "params": params},
                          separators=(",", ":")).encode()
        pieces = [b"\xff\x07" + len(text).to_bytes(2, "big") + (at // 238).to_bytes(2, "big") + text[at:at + 238]
                  for at in range(0, len(text), 238)] if len(text) > SIZE else [text]
        for piece in pieces:
            number = self.plugin.write(piece)
            while "ev" in (line := self.plugin.line()):
                self.plugin.events.append(line)
            assert (line["reqId"], line["ok"]) == (number, True), line
        return json.loads(self.text())

    def text(self):
        joined, total = b"", None
        while total is None or len(joined) < total:
            event = self.plugin.events.pop(0) if self.plugin.events else self.plugin.line()
            assert event["ev"] == "data", event
            data = base64.b64decode(event["b64"])
            assert len(data) <= SIZE
            if data[:1] == b"{":
                return data
            size = 6 if data[0] == 0xFF else 3
            self.headers.add(size)
            total = int.from_bytes(data[2:4] if size == 6 else data[:2], "big")
            joined += data[size:]
        return joined


class SimulatorTest(unittest.TestCase):
    def setUp(self):
        self.sim = Simulator("--manual", "--pace", "40", "--ble", "TF-1001", "--admin-password", "TF-1001=quietmoose")
        self.addCleanup(self.sim.end)
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": self.sim.ready["ble"]["bus"]}
        self.address = self.sim.ready["ble"]["devices"][0]["address"]

    def connected(self):
        plugin = Plugin(**self.environment)
        self.addCleanup(plugin.end)
        plugin.line()
        found = plugin.ask("scan", ms=100)["devices"]
        self.assertEqual([(d["id"], d["name"]) for d in found], [(self.address, "Tallyforge TF-1001")])
        self.assertEqual(plugin.ask("connect", id=self.address), {"writePayload": SIZE})
        return plugin

    def test_administration_up_to_a_restart(self):
        plugin = self.connected()
        host = Host(plugin)
        self.assertTrue(host.call("login", password="quietmoose")["result"]["must_change_password"])
        host.call("changePassword", current_password="quietmoose", new_password="n" * 300, confirm_password="n" * 300)
        many = [{"manufacturer": f"maker {n}", "model": "m" * 60, "sport": [], "x": n} for n in range(500)]
        self.sim.control("/admin", controllers=many)
        for method, key in [("getState", "fields"), ("scanWifi", "networks"), ("getControllerList", "controllers"),
                            ("getStatus", "device_id")]:
            self.assertIn(key, host.call(method)["result"])
        self.assertEqual(host.headers, {3, 6})
        host.call("reboot")
        self.assertEqual(plugin.line(), {"ev": "disconnected", "reason": ""})
        while self.sim.state()["devices"]["TF-1001"]["admin"]["down"]:
            pass
        self.assertIsInstance(plugin.ask("connect", id=self.address), dict)
        self.assertEqual(Host(plugin).call("getState")["error"]["code"], "unauthorized")
        self.assertEqual(self.sim.violations(), [])

    def test_what_can_go_wrong(self):
        plugin = self.connected()
        self.sim.control("/ble", lose=True)
        self.assertEqual(plugin.line(), {"ev": "disconnected", "reason": ""})
        for steps, op, answer in [({"pairing": False}, "connect", "not_paired"),
                                  ({"pairing": True, "near": False}, "connect", "connect_failed"),
                                  ({"powered": False}, "scan", "bluetooth_unavailable")]:
            with self.subTest(steps):
                self.sim.control("/ble", **steps)
                self.assertEqual(plugin.ask(op, id=self.address, ms=100), answer)


if __name__ == "__main__":
    unittest.main()
