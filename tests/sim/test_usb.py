# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device and a receiver on serial ports: greeting, administration, tunnels and their faults."""

import hashlib
import json
import os
import socket
import tempfile
import time
import unittest

from support import FeedClient, SimulatorTest
from usb_host import UsbHost, compact, frame

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

    def until(self, host, method, wanted):
        """Asks again and again until the reply fits."""
        while not wanted(reply := host.call(method)):
            time.sleep(0.01)
        return reply


class LineTest(UsbTest):
    def test_hello_then_the_state_and_each_change_at_its_moment(self):
        host = self.host()
        hello, state = host.message(3), host.message(1)
        self.assertEqual((hello["t"], hello["device_id"]), ("hello", "TF-1"))
        self.assertEqual(set(hello["tunnel"]["streams"]), {"echo", "sink", "source", "ota"})
        self.assertEqual((state["type"], state["fields"]["home_score"]), ("state", 0))
        begun = time.monotonic_ns()
        told = self.steer("/set", fields={"home_score": 55})
        host.message(1, lambda m: m["fields"]["home_score"] == 55)
        self.assertTrue(begun < told["usb_ns"] < time.monotonic_ns())
        sent = self.sim.control(f"/sent?revision={told['revision']}")[1]
        self.assertEqual(sent["usb_ns"], told["usb_ns"])
        host.ctrl({"t": "ping"})
        self.wait_for(lambda s: self.face(s)["pings"])

    def test_the_port_is_fresh_for_each_host_and_gone_during_a_restart(self):
        host = self.signed_in()
        self.assertEqual(host.call("reboot"), {"status": "ok"})
        with self.assertRaises(EOFError):
            host.message(9)
        self.assertFalse(os.path.lexists(PATHS["usb"]))
        host.close()
        again = self.greeted()   # opens although the former host had claimed the port
        self.assertEqual(again.call("getStatus"), "unauthorized")
        again.call("login", password=PASSWORD)
        self.assertEqual(again.call("getStatus")["reset_reason"], "software")

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


class AdminTest(UsbTest):
    def test_passwords(self):
        host = self.greeted("receiver")
        self.assertEqual(host.call("login", password="quietmoose"), {"must_change_password": True})
        self.assertEqual(host.call("getSettings"), "password_change_required")
        table = [("wrong", "12345678", "bad_password"), ("quietmoose", "1234567", "weak_password"),
                 ("quietmoose", "QuietMoose", "weak_password"), ("quietmoose", "12345678", {})]
        for old, new, result in table:
            self.assertEqual(host.call("changePassword", current_password=old, new_password=new,
                                       confirm_password=new), result)
        self.assertIn("settings", self.sim.state()["devices"]["TF-2"]["admin"])
        refused = [host.call("login", password="no") for _ in range(5)]
        self.assertEqual(set(refused), {"invalid_credentials"})
        self.assertEqual(host.call("login", password="12345678"), "rate_limited")
        self.steer("/admin", device="TF-2", unlock=True)
        self.assertEqual(host.call("login", password="12345678"), {"must_change_password": False})

    def test_joining_networks(self):
        host = self.signed_in()
        table = [("Venue", "courtside-7", {"saving", "connecting", "verifying", "ok"}),
                 ("Venue", "wrong", {"saving", "connecting", "reverting", "reverted"}),
                 ("Nowhere", "", {"saving", "connecting", "reverting", "reverted"})]
        self.assertEqual([n["ssid"] for n in host.call("scanWifi")["networks"]].count("Venue"), 2)
        for ssid, password, states in table:
            host.call("configureWifi", **{"ssid": ssid, "pass": password})
            seen = {}
            while not seen.keys() & {"ok", "reverted"}:
                now = host.call("getStatus")["wifi_provision"]
                seen[now["state"]] = now
            self.assertEqual(seen.keys(), states)
            self.assertEqual(bool(seen.get("reverted", {}).get("detail")), "ok" not in states)
        self.assertEqual(host.call("getStatus")["wifi_sta_ip"], "127.0.0.1")

    def test_the_token_opens_the_feed(self):
        host = self.signed_in()
        token = host.call("ensureApiToken", force_new=True)["token"]
        line = compact({"type": "auth", "token": token}) + b"\r\n"
        client = FeedClient(self.sim, line)
        self.addCleanup(client.close)
        self.assertEqual(client.message(), {"type": "auth_ok"})
        self.assertNotEqual(token, self.sim.token)
        host.call("ensureApiToken", force_new=True)
        while client.line():    # it is cut off, since its token is an old one
            pass
        late = FeedClient(self.sim, line)
        self.addCleanup(late.close)
        self.assertEqual(late.message(), {"type": "auth_fail"})
        self.steer("/admin", device="TF-1", settings={"tcp_feed_enabled": False})
        with self.assertRaises(OSError):
            FeedClient(self.sim)
        self.steer("/admin", device="TF-1", settings={"tcp_feed_enabled": True})

    def test_settings_are_kept_and_checked(self):
        host = self.signed_in()
        settings = host.call("getSettings")
        radio = {"wireless_auto_scan", "wireless_group", "wireless_channel", "xbee_channel",
                 "xbee_pan_id"}
        plain = {key: value for key, value in settings.items() if key not in radio}
        choice = host.call("getControllerList")["controllers"][0]
        wished = plain | choice | {"usb_tunnel_enabled": False}
        self.assertEqual(host.call("setSettings", **wished), {})
        self.assertNotIn("tunnel", host.message(3))
        self.assertEqual(host.call("getControllerConfig"), choice)
        self.assertEqual(host.call("setSettings", **wished | {"model": "none"}), "invalid_value")
        self.assertEqual(host.call("setSettings", **wished | {"wireless_group": 1}), "bad_request")
        self.assertEqual(len(self.sim.violations()), 1)
        self.assertEqual(host.call("setSettings", **plain | choice), {})

    def test_tests_and_updates_go_on_until_they_are_done(self):
        host = self.signed_in()
        self.steer("/admin", device="TF-1", checks={"dns": "no answer"})
        self.steer("/admin", device="TF-1", test_hangs=True)
        self.until(host, "networkTest", lambda r: len(r["checks"]) == 5)
        self.steer("/admin", device="TF-1", test_hangs=False)
        done = self.until(host, "networkTest", lambda r: r["status"] == "done")
        self.assertEqual((done["overall"], done["checks"]["dns"]["detail"]), (False, "no answer"))
        self.steer("/admin", device="TF-1", firmware={"error": "flash is full"})
        host.call("otaApply")
        self.until(host, "otaProgress", lambda r: r["error"] == "flash is full")
        self.steer("/admin", device="TF-1", firmware={"error": "", "version": "1"})
        offered = host.call("otaCheck")["version"]
        host.call("otaApply")
        self.until(host, "otaProgress", lambda r: r["state"] == "rebooting")
        host.close()
        self.wait_for(lambda s: s["devices"]["TF-1"]["admin"]["firmware"]["version"] == offered)

    def test_updates_take_the_course_that_is_wished(self):
        host = self.signed_in()
        table = [
            ("firmware", "otaApply", {}, "otaProgress", {"total": False, "fails_in": "applying",
             "error": None, "waits": True}, ["downloading", "applying", "failed"], (0, None)),
            ("chip", "c6OtaApply", {"source": "partition", "force": False}, "c6OtaStatus",
             {"stages": [["transferring", 1], ["humming", 1]], "error": "no", "bytes": 9,
              "fails_in": "humming", "waits": True}, ["transferring", "humming", "failed"],
             (9, "no"))]
        for name, start, params, method, wish, states, last in table:
            self.steer("/admin", device="TF-1", **{name: wish})
            self.assertEqual(host.call(start, **params), {"status": "ok"})
            time.sleep(0.2)    # more than the time of the stages, which wait
            seen = {}
            reply = self.until(host, method, lambda r: r["state"] == "failed" or
                               seen.update({r["state"]: r}))
            self.assertEqual([*seen, reply["state"]], states)
            self.assertEqual((reply["total_bytes"], reply.get("error")), last)
            self.steer("/admin", device="TF-1", **{name: {
                "error": "", "total": True, "waits": False, "fails_in": ""}})

    def test_firmware_comes_through_the_host(self):
        host = self.signed_in()
        self.steer("/admin", device="TF-1", joined="", firmware={
            "version": "1", "bytes": 100000, "waits": True, "error": "", "total": True})
        told = self.steer("/cloud")["ota"]["port"]
        for end in (b"dial_failed", b"damaged", b""):
            self.assertEqual(host.call("otaApply"), {"status": "ok"})
            number = host.frames_until(5, lambda m: m[1:] == b"\1ota")[0]
            if end == b"dial_failed":
                host.write(frame(5, bytes([number, 3]) + end))
                self.until(host, "otaProgress", lambda r: "could not reach" in r["error"])
                continue
            host.write(frame(5, bytes([number, 2])))
            wish = host.frames_until(5, lambda m: m[1] == 4)[2:]
            with socket.create_connection(("127.0.0.1", told), 5) as server:
                server.sendall(wish)
                data = b"".join(iter(lambda: server.recv(9999), b""))
            data = data[:-1] + b"?" if end else data
            for at in range(0, len(data), 500):
                host.write(frame(5, bytes([number, 4]) + data[at:at + 500]))
            if end:
                self.until(host, "otaProgress", lambda r: "damaged" in r["error"])
        self.until(host, "otaProgress", lambda r: r["state"] == "rebooting")
        host.close()
        self.wait_for(lambda s: s["devices"]["TF-1"]["admin"]["firmware"]["version"] == "2.5.0")
        self.steer("/admin", device="TF-1", joined="Venue", firmware={"waits": False})

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


class ReceiverTest(UsbTest):
    def test_a_new_key_ends_the_link_until_the_device_has_it(self):
        host = self.greeted("receiver")
        host.call("login", password=self.sim.control("/secrets")[1]["devices"]["TF-2"]
                  ["device_password"])
        host.ctrl({"t": "rx_set", "key": "short"})
        self.assertFalse(host.message(3, lambda m: m["t"] == "rx_set")["ok"])
        host.ctrl({"t": "rx_set", "generate_key": True})
        key = host.message(3, lambda m: m["t"] == "rx_set")["key"]
        with self.assertRaises(EOFError):
            host.message(9)
        host.close()
        host = self.host("receiver")
        status = host.message(3)
        self.assertEqual((status["link"], status["configured"]), (False, True))
        host.request("login", {"password": "x"})
        with self.assertRaises(TimeoutError):
            host.reply(0.2)
        peer = self.sim.state()["devices"]["TF-2"]["admin"]["radio"]["peer_mac"]
        self.steer("/admin", device="TF-2", espnow={"peer_mac": peer, "key": key}, restart=True)
        self.assertTrue(host.message(3, lambda m: m.get("link"))["link"])
        self.assertIsInstance(host.call("login", password="x"), str)

    def test_one_that_knows_no_device_and_stays_at_its_port(self):
        host = self.greeted("receiver")
        self.steer("/usb/receiver", key="", hide=["channel", "fw"], restarts=False)
        self.assertEqual(host.message(3, lambda m: not m.get("configured", True)),
                         {"t": "rx_status", "configured": False, "link": False})
        host.ctrl({"t": "rx_set", "key": "0" * 32})
        self.assertTrue(host.message(3, lambda m: m["t"] == "rx_set")["ok"])
        self.assertTrue(host.message(3)["configured"])
        self.steer("/usb/receiver", hide=[], restarts=True)


class TunnelTest(UsbTest):
    def test_the_pipe_counts_both_ways(self):
        host = self.greeted()
        self.steer("/usb/pipe", reset=True)
        self.steer("/usb/pipe", send=300_000, seed=4)
        got = b""
        for payload in host.frames(2):
            got += payload
            if len(got) == 300_000:
                break
        host.write(frame(2, got[:512]))
        self.wait_for(lambda s: self.face(s)["pipe"]["received"]["bytes"] == 512)
        self.assertEqual(self.face(self.sim.state())["pipe"]["sent"]["bytes"], 300_000)

    def test_streams_open_carry_data_within_their_credit_and_close(self):
        host = self.greeted()
        number = self.steer("/usb/stream", open="echo", window=1000)["id"]
        self.assertEqual(next(host.frames(5)), bytes([number, 1]) + b"echo")
        host.write(frame(5, bytes([number, 2])))
        credit = next(host.frames(5))
        self.assertEqual(credit, bytes([number, 6]) + (1000).to_bytes(4, "little"))
        for size in (512, 400):
            host.write(frame(5, bytes([number, 4]) + b"x" * size))
        self.assertEqual(next(host.frames(5))[2:], (512).to_bytes(4, "little"))
        self.fault("no-credit")
        for _ in range(3):
            host.write(frame(5, bytes([number, 4]) + b"x" * 300))
        self.wait_for(lambda s: s["violations"])
        self.assertIn("beyond its credit", self.sim.violations()[0])
        self.steer("/usb/stream", id=number, send=1000)
        got = b"".join(next(host.frames(5))[2:] for _ in range(2))
        self.assertEqual(len(got), 1000)
        host.write(frame(5, bytes([number, 5])))
        self.wait_for(lambda s: self.face(s)["streams"][str(number)]["reason"] == "host")

    def test_credit_that_is_slow_or_more_than_there_can_be(self):
        host = self.greeted()
        for kind, wanted in (("slow-credit", 256), ("excess-credit", 0xFFFFFFFF)):
            self.fault(kind)
            number = self.steer("/usb/stream", open="sink")["id"]
            host.write(frame(5, bytes([number, 2])))
            credit = next(m for m in host.frames(5) if m[:2] == bytes([number, 6]))
            self.assertEqual(credit[2:], wanted.to_bytes(4, "little"))

    def test_the_cloud_echoes_swallows_and_sends(self):
        host = self.greeted()
        host.ctrl({"t": "hello", "streams": 1})
        streams = host.message(3, lambda m: "tunnel" in m)["tunnel"]["streams"]
        peers = {}
        for name, to in streams.items():
            peers[name] = socket.create_connection((to["host"], to["port"]), 5)
            self.addCleanup(peers[name].close)
        peers["echo"].sendall(b"ball")
        self.assertEqual(peers["echo"].recv(9), b"ball")
        self.steer("/cloud", target="echo", send=100, seed=2)
        self.assertEqual(len(peers["echo"].recv(999)), 100)
        self.assertEqual(sum(map(len, iter(lambda: peers["source"].recv(9999), b""))), 65536)
        peers["ota"].sendall(b"GET 70000\n")
        self.assertEqual(sum(map(len, iter(lambda: peers["ota"].recv(9999), b""))), 70000)
        peers["sink"].sendall(b"ball")
        while not (came := self.steer("/cloud")["sink"]["connections"][-1]["received"])["bytes"]:
            pass
        self.assertEqual(came["sha256"], hashlib.sha256(b"ball").hexdigest())
        self.steer("/cloud", target="sink", end="reset")
        with self.assertRaises(ConnectionResetError):
            peers["sink"].recv(1)

    def test_a_host_that_does_not_read_loses_envelopes_and_nothing_stands_still(self):
        host = self.greeted()
        while not (face := self.face(self.sim.state()))["dropped"]:
            self.steer("/set", raw={"type": "state", "fields": {"note": "x" * 1900}})
        host.message(1)
        self.assertTrue(face["open"])
        self.fault("deaf")
        with self.assertRaises(BlockingIOError):
            while True:
                os.write(host.handle, frame(3, compact({"t": "ping"})))


class WishesTest(UsbTest):
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
