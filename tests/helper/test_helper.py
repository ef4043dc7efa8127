# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The Bluetooth helper as a process, between a plug-in's port and a BlueZ made of D-Bus objects.

The environment's HELPER is the program, SERVICE and CHARACTERISTIC are what it was built for.
"""

import base64
import json
import os
import pathlib
import socket
import subprocess
import tempfile
import time
import unittest

import dbus
import dbusmock

HELPER, SERVICE = os.environ["HELPER"], os.environ["SERVICE"]
CHARACTERISTIC = os.environ["CHARACTERISTIC"]
GATT, DEVICE, MOCK = "org.bluez.GattCharacteristic1", "org.bluez.Device1", "org.bluez.Mock"
ADAPTER = "org.bluez.Adapter1"
REFUSED = "org.bluez.Error.NotPermitted"
PATIENCE = 10    # seconds after which a wait counts as failed
A, B, C = "AA:00:00:00:00:01", "AA:00:00:00:00:02", "AA:00:00:00:00:03"


def until(condition):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("waited in vain")
        time.sleep(0.005)


class Plugin:
    """What the plug-in does for the helper: a port, a token, operations."""

    def __init__(self, stderr=None, **environment):
        server = socket.create_server(("127.0.0.1", 0))
        server.settimeout(PATIENCE)
        self.process = subprocess.Popen(
            [HELPER, "--port", str(server.getsockname()[1]), "--token", "t0ken"],
            # Qt would ask the bus's owner, here Python, for the version of bluetoothd.
            env=os.environ | {"BLUETOOTH_FORCE_DBUS_LE_VERSION": "5.80", "QT_LOGGING_RULES": "*=false"} | environment,
            stderr=stderr)
        self.socket, _ = server.accept()
        server.close()
        self.socket.settimeout(PATIENCE)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)    # as the plug-in does
        self.lines = self.socket.makefile("rb")
        self.events = []
        self.asked = 0

    def line(self):
        return json.loads(self.lines.readline())

    def send(self, op, **keys):
        self.asked += 1
        self.socket.sendall(json.dumps(keys | {"op": op, "reqId": self.asked}).encode() + b"\n")
        return self.asked

    def reply(self, number):
        while "ev" in (line := self.line()):
            self.events.append(line)
        assert line["reqId"] == number, line
        return line.get("result") if line["ok"] else line["error"]["code"]

    def ask(self, op, **keys):
        return self.reply(self.send(op, **keys))

    def write(self, data):
        return self.send("write", b64=base64.b64encode(data).decode())

    def end(self):
        self.socket.close()
        self.lines.close()
        return self.process.wait(PATIENCE)


class HelperTest(dbusmock.DBusTestCase):
    @classmethod
    def setUpClass(cls):
        cls.start_system_bus()

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.mock = None

    def tearDown(self):
        if self.mock:
            self.mock.terminate()
            self.mock.wait()

    def bluez(self, adapters=1):
        template = str(pathlib.Path(__file__).resolve().parents[2] / "sim/bluez_double.py")
        self.mock, self.root = self.spawn_server_template(template, {"folder": str(self.folder)},
                                                          stdout=subprocess.DEVNULL)
        for number in range(adapters):
            self.root.AddAdapter(f"hci{number}", "test", dbus_interface=MOCK)

    def object(self, path):
        return self.get_dbus(system_bus=True).get_object("org.bluez", path)

    def update(self, path, interface, **properties):
        self.object(path).UpdateProperties(interface, properties, dbus_interface=dbusmock.MOCK_IFACE)

    def scoreboard(self, address=A, on="hci0", **properties):
        return self.root.AddScoreboard(on, address, "Main gym", SERVICE, CHARACTERISTIC,
                                       dbus.Dictionary(properties, signature="sv"), dbus_interface=MOCK)

    def device(self, characteristic, **properties):
        self.update(str(characteristic).rsplit("/", 2)[0], DEVICE, **properties)

    def plugin(self, **keys):
        plugin = Plugin(**keys)
        self.addCleanup(plugin.end)
        self.assertEqual(plugin.line(), {"hello": "t0ken"})
        return plugin

    def connected(self, **keys):
        self.bluez()
        characteristic = self.scoreboard()
        plugin = self.plugin(**keys)
        self.assertIsInstance(plugin.ask("connect", id=A), dict)
        return plugin, characteristic

    def log(self):
        log = self.folder / "log"
        return log.read_text().splitlines() if log.exists() else []

    def test_command_line(self):
        with socket.create_server(("127.0.0.1", 0)) as server:
            port = str(server.getsockname()[1])    # where nobody is in a moment
        for arguments, code in [([], 2), (["--port", "1"], 2), (["--token", "t"], 2),
                                (["--port", "x", "--token", "t"], 2), (["--port", port, "--token", "t"], 0)]:
            with self.subTest(arguments):
                run = subprocess.run([HELPER, *arguments], check=False, capture_output=True, timeout=PATIENCE)
                self.assertEqual(run.returncode, code)

    def test_unavailable_until_it_is_there(self):
        nowhere = self.plugin(DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nowhere")
        self.assertEqual(nowhere.ask("start"), "bluetooth_unavailable")
        plugin = self.plugin()

        def refusal(words):
            self.assertEqual(plugin.ask("scan", ms=100), "bluetooth_unavailable")
            plugin.send("start")
            self.assertIn(words, plugin.line()["error"]["message"])

        refusal("not running")
        self.bluez(adapters=0)
        refusal("no Bluetooth adapter")
        first = self.root.AddAdapter("hci0", "test", dbus_interface=MOCK)
        self.update(first, ADAPTER, Powered=False)
        refusal("switched off")
        self.root.AddAdapter("hci1", "test", dbus_interface=MOCK)    # is on
        self.update("/org/bluez/hci1", ADAPTER, Address="00:01:02:03:04:99")
        self.scoreboard(A, on="hci0", MTU=dbus.UInt16(100))    # from the time when hci0 was on
        self.scoreboard(A, on="hci1", RSSI=dbus.Int16(-40))
        self.assertEqual(plugin.ask("start"), {})
        self.assertEqual(len(plugin.ask("scan", ms=100)["devices"]), 1)
        self.assertEqual(plugin.ask("connect", id=A), {"writePayload": 20})

    def test_scan(self):
        self.bluez()
        self.scoreboard(A, RSSI=dbus.Int16(-40))
        self.scoreboard(B, RSSI=dbus.Int16(0))                      # remembered, but silent
        self.scoreboard(C, RSSI=dbus.Int16(0), Connected=True)      # silent, since it is connected
        self.root.AddDevice("hci0", "BB:00:00:00:00:01", "phone", dbus_interface=MOCK)
        plugin = self.plugin()
        first, second = plugin.send("scan", ms=60000), plugin.send("scan", ms=300)
        self.assertEqual(plugin.reply(first), "cancelled")
        found = plugin.reply(second)
        self.assertEqual(found["seen"], 3)
        self.assertEqual(sorted((d["id"], d["name"], d["rssi"]) for d in found["devices"]),
                         [(A, "Main gym", -40), (C, "Main gym", 0)])

    def test_write_size_and_pairing(self):
        self.bluez()
        plugin = self.plugin()
        for number, (mtu, size) in enumerate([(23, 20), (247, 244), (517, 514), (None, 20), (5, 20)]):
            with self.subTest(mtu=mtu):
                address = f"CC:00:00:00:00:0{number}"
                self.scoreboard(address, Paired=number == 1, **({"MTU": dbus.UInt16(mtu)} if mtu else {}))
                self.assertEqual(plugin.ask("connect", id=address), {"writePayload": size})
                self.assertEqual(plugin.ask("disconnect"), {})
                self.assertEqual(self.log(), ["Connect", *([] if number == 1 else ["Pair"]), "StartNotify",
                                              "Disconnect"])
                (self.folder / "log").unlink()

    def test_connect_failures(self):
        self.bluez()
        self.scoreboard(A, Flags=dbus.Array(["write-without-response", "notify"]))
        self.root.AddScoreboard("hci0", B, "other", CHARACTERISTIC, SERVICE, dbus.Dictionary(signature="sv"),
                                dbus_interface=MOCK)
        characteristic = self.scoreboard(C)
        plugin = self.plugin()
        for failing, name, code in [
                ("", A, "unsupported_device"), ("", B, "unsupported_device"), ("", "nobody", "not_found"),
                ("", "DD:00:00:00:00:01", "not_found"), ("Connect", C, "connect_failed"),
                ("StartNotify", C, "connect_failed"), ("StartNotify Pair", C, "not_paired")]:
            with self.subTest(name=name, failing=failing):
                for method in failing.split():
                    self.root.LetFail(method, "org.bluez.Error.Failed", dbus_interface=MOCK)
                if "Pair" in failing:
                    self.device(characteristic, Paired=False)
                self.assertEqual(plugin.ask("connect", id=name), code)
                self.root.LetFail("Connect", "", dbus_interface=MOCK)
        self.assertEqual(plugin.events, [])

    def test_writes(self):
        with open(self.folder / "stderr", "wb") as stderr:
            plugin, characteristic = self.connected(stderr=stderr, QT_LOGGING_RULES="*.debug=true", QDBUS_DEBUG="1")
        (self.folder / "hold").touch()
        first = plugin.write(b"\xff\x00one")
        until(lambda: self.log()[-1] == "WriteValue ff006f6e65 request")
        self.assertEqual(plugin.ask("write", b64="dHdv"), "busy")    # so the first one is not answered
        (self.folder / "hold").unlink()
        self.assertEqual(plugin.reply(first), {})
        for data in b"S3cret", bytes(range(244)):
            self.assertEqual(plugin.reply(plugin.write(data)), {})
            self.assertEqual(self.log()[-1], f"WriteValue {data.hex()} request")
        for keys in {"b64": "?"}, {}, {"b64": 5}:
            self.assertEqual(plugin.ask("write", **keys), "bad_request")
        self.assertEqual(plugin.ask("sing"), "unknown_operation")
        for error, paired, answer in [(REFUSED, True, "write_failed"), (REFUSED, False, "not_paired"), ("", False, {})]:
            self.root.LetFail("WriteValue", error, dbus_interface=MOCK)
            self.device(characteristic, Paired=paired)
            self.assertEqual(plugin.reply(plugin.write(b"x")), answer)
        stderr = (self.folder / "stderr").read_bytes()
        for form in b"S3cret", b"S3cret".hex().encode(), b"83, 51, 99":
            self.assertNotIn(form, stderr)    # the text may be a password

    def test_every_notification_is_an_event(self):
        plugin, characteristic = self.connected()
        sent = [f"{number}".encode() * 3 for number in range(300)] + [b"same", b"same", bytes(range(256))]
        for data in sent:
            self.update(characteristic, GATT, Value=dbus.ByteArray(data))
        received = [plugin.line() for _ in sent]
        self.assertEqual([base64.b64decode(line["b64"]) for line in received], sent)
        self.assertEqual({line["ev"] for line in received}, {"data"})

    def test_losses(self):
        plugin, characteristic = self.connected()
        self.device(characteristic, Connected=False)
        self.assertEqual(plugin.line(), {"ev": "disconnected", "reason": ""})
        self.assertEqual(plugin.reply(plugin.write(b"x")), "disconnected")
        self.assertEqual(plugin.ask("disconnect"), {})
        self.assertIsInstance(plugin.ask("connect", id=A), dict)
        (self.folder / "hold").touch()
        write = plugin.write(b"x")
        until(lambda: self.log()[-1].startswith("WriteValue"))
        self.mock.kill()    # all of BlueZ
        self.assertIn(plugin.reply(write), ("disconnected", "write_failed"))
        self.assertEqual(plugin.line(), {"ev": "disconnected", "reason": "Bluetooth was stopped on this computer."})
        self.assertEqual(plugin.ask("connect", id=A), "bluetooth_unavailable")

    def test_disconnect_and_connect_again(self):
        plugin, _ = self.connected()
        self.scoreboard(B)
        self.assertEqual(plugin.ask("disconnect"), {})
        self.assertEqual(self.log()[-1], "Disconnect")
        first, second = plugin.send("connect", id=A), plugin.send("disconnect")
        self.assertIn(plugin.reply(first), ("cancelled", {"writePayload": 20}))
        self.assertEqual(plugin.reply(second), {})    # it didn't overtake
        self.assertIsInstance(plugin.ask("connect", id=A), dict)
        first, second = plugin.send("connect", id=B), plugin.send("connect", id=A)
        self.assertIn(plugin.reply(first), ("cancelled", {"writePayload": 20}))
        self.assertIsInstance(plugin.reply(second), dict)
        self.assertEqual({event["ev"] for event in plugin.events}, {"disconnected"})

    def test_ends_with_the_plugin(self):
        self.bluez()
        self.scoreboard()
        for connected, last_words in [(True, b""), (True, b'{"op":"quit","reqId":0}\n'), (True, b"x" * 70000),
                                      (False, b'{"op":"connect","id":"%b","reqId":9}\n{"op":"quit"}\n' % A.encode())]:
            with self.subTest(last_words[:20]):
                # With a question to BlueZ under way it ends without D-Bus having tidied up.
                plugin = self.plugin(**({} if connected else {"ASAN_OPTIONS": "detect_leaks=0"}))
                if connected:
                    self.assertIsInstance(plugin.ask("connect", id=A), dict)
                plugin.socket.sendall(last_words)
                self.assertEqual(plugin.process.wait(PATIENCE) if last_words else plugin.end(), 0)
                if connected:
                    self.assertEqual(self.log()[-1], "Disconnect")


if __name__ == "__main__":
    unittest.main()
