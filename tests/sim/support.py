# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Runs the real simulator on free ports and speaks to it over real sockets."""

import contextlib
import http.client
import json
import pathlib
import signal
import socket
import ssl
import subprocess
import sys
import tempfile
import time
import unittest

SIM = str(pathlib.Path(__file__).resolve().parents[2] / "sim")
FREE_PORTS = ["--portal-port", "0", "--feed-port", "0", "--control-port", "0"]
HEADERS = {"Content-Type": "application/json", "Accept": "application/json",
           "User-Agent": "Tallyforge-OBS/1.0.1", "Cookie": "tf_session=cookie-of-a-test"}
PATIENCE = 10   # seconds after which a wait counts as failed
READ_ONLY = ("/state", "/secrets", "/sent", "/cloud")


def blind_tls():
    context = ssl.create_default_context()
    context.check_hostname = False
    context.verify_mode = ssl.CERT_NONE
    return context


class Simulator:
    def __init__(self, *options):
        self.log = ""
        self._log = tempfile.TemporaryFile()
        self.process = subprocess.Popen(
            [sys.executable, SIM, *FREE_PORTS, "--session-cookie", "cookie-of-a-test", *options],
            stdout=subprocess.PIPE, stderr=self._log, text=True)
        self.ready = json.loads(self.process.stdout.readline())
        self.token = self.ready["devices"][0]["token"]

    def end(self, number=signal.SIGTERM):
        """Ends the program, keeps its log, and returns its exit code and how long that took."""
        begun = time.monotonic()
        self.process.send_signal(number)
        code = self.process.wait(PATIENCE)
        seconds = time.monotonic() - begun
        self.process.stdout.close()
        with self._log as log:
            log.seek(0)
            self.log = log.read().decode()
        assert "Traceback" not in self.log, self.log
        return code, seconds

    def control(self, path, /, **body):
        """A control request: GET without a body, else POST; returns status and reply."""
        port = int(self.ready["control"].rsplit(":", 1)[1])
        connection = http.client.HTTPConnection("127.0.0.1", port, timeout=PATIENCE)
        with contextlib.closing(connection):
            get = not body and path.partition("?")[0] in READ_ONLY
            connection.request("GET" if get else "POST", path, None if get else json.dumps(body))
            reply = connection.getresponse()
            return reply.status, json.load(reply)

    def state(self):
        return self.control("/state")[1]

    def violations(self):
        """The violations so far, which are forgotten by this."""
        found = self.state()["violations"]
        self.control("/clear", where="violations")
        return found

    def connection(self, timeout=PATIENCE):
        return http.client.HTTPSConnection("127.0.0.1", self.ready["portal_port"],
                                           timeout=timeout, context=blind_tls())

    def portal(self, method, path, body=None, headers=HEADERS, timeout=PATIENCE):
        """A portal call on a connection of its own; returns status, reply and Set-Cookie."""
        with contextlib.closing(self.connection(timeout)) as connection:
            data = json.dumps(body) if isinstance(body, dict) else body
            connection.request(method, path, data, headers)
            reply = connection.getresponse()
            data = reply.read()
            with contextlib.suppress(ValueError):
                data = json.loads(data)
            return reply.status, data, reply.getheader("Set-Cookie")


class FeedClient:
    """A client of a device's feed; each line arrives as bytes, the end as b""."""

    def __init__(self, sim, first_line=None, number=0, timeout=PATIENCE):
        device = sim.ready["devices"][number]
        sock = socket.create_connection((device["host"], device["port"]), timeout)
        try:
            self.socket = blind_tls().wrap_socket(sock)
        except BaseException:
            sock.close()
            raise
        self._file = self.socket.makefile("rb")
        auth = json.dumps({"type": "auth", "token": device["token"]}, separators=(",", ":"))
        self.socket.sendall(auth.encode() + b"\r\n" if first_line is None else first_line)

    def line(self):
        return self._file.readline()

    def message(self):
        return json.loads(self.line())

    def until(self, wanted):
        """Reads messages until one fits, and returns it."""
        while True:
            message = self.message()
            if wanted(message):
                return message

    def close(self):
        self._file.close()
        self.socket.close()


class SimulatorTest(unittest.TestCase):
    """Has one simulator for all its tests; after each, no fault and no violation is left."""

    options = ("--manual",)

    @classmethod
    def setUpClass(cls):
        cls.sim = Simulator(*cls.options)
        cls.addClassCleanup(cls.sim.end)

    def tearDown(self):
        self.sim.control("/clear", where="device")
        self.sim.control("/clear")
        self.assertEqual(self.sim.violations(), [])

    def client(self, *arguments, **named):
        client = FeedClient(self.sim, *arguments, **named)
        self.addCleanup(client.close)
        return client

    def wait_for(self, condition):
        end = time.monotonic() + PATIENCE
        while not condition(self.sim.state()):
            self.assertLess(time.monotonic(), end, "the condition never came true")
