# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The program: its command line, its games, its certificates, and how it ends."""

import pathlib
import signal
import socket
import ssl
import stat
import subprocess
import sys
import tempfile
import unittest

from support import FREE_PORTS, SIM, FeedClient, Simulator


class ProgramTest(unittest.TestCase):
    def start(self, *options):
        sim = Simulator(*options)
        self.addCleanup(lambda: sim.process.poll() is None and sim.end())
        return sim

    def folder(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return pathlib.Path(folder.name)

    def test_a_seed_gives_the_same_game_again_and_another_seed_another(self):
        runs = []
        for seed in ("7", "7", "8"):
            sim = self.start("--manual", "--seed", seed)
            runs.append([sim.control("/step", count=n)[1]["fields"] for n in (1, 5, 50, 100000)])
            last = sim.control("/step", count=1)[1]
            self.assertTrue(last["finished"])
            self.assertEqual(last["revision"], 4, "a finished game changes nothing more")
            sim.end()
        self.assertEqual(runs[0], runs[1])
        self.assertNotEqual(runs[0], runs[2])
        final = runs[0][-1]
        self.assertNotEqual(final["home_score"], final["away_score"])
        self.assertEqual((final["clock"], final["period"] >= 4), ("0.0", True))

    def test_the_authority_is_trusted_alone_kept_and_private(self):
        folder = self.folder() / "ca"
        for _ in range(2):
            sim = self.start("--ca-dir", str(folder))
            trust = ssl.create_default_context(cafile=sim.ready["ca"])
            for name in ("localhost", "127.0.0.1"):
                with socket.create_connection(("127.0.0.1", sim.ready["portal_port"]), 5) as sock:
                    trust.wrap_socket(sock, server_hostname=name).close()
            found = {path.name: path.read_bytes() for path in folder.iterdir()}
            self.assertEqual(set(found), {"ca.crt", "ca.key"})
            self.assertEqual(stat.S_IMODE((folder / "ca.key").stat().st_mode), 0o600)
            sim.end()
        sim = self.start()
        with socket.create_connection(("127.0.0.1", sim.ready["portal_port"]), 5) as sock, \
                self.assertRaises(ssl.SSLCertVerificationError):
            trust.wrap_socket(sock, server_hostname="localhost")
        self.assertEqual({path.name: path.read_bytes() for path in folder.iterdir()}, found)

    def test_it_ends_soon_whatever_hangs_and_tells_no_secret(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            sim = self.start("--account", "two@example.com:steps-and-stairs")
            client = FeedClient(sim)
            self.addCleanup(client.close)
            client.message()
            sim.control("/fault", where="portal", kind="hang")
            call = sim.connection()
            self.addCleanup(call.close)
            call.connect()
            call.sock.sendall(b"GET /auth/me HTTP/1.1\r\nContent-Type: application/json\r\n"
                              b"Accept: application/json\r\nUser-Agent: Tallyforge-OBS/1.0.1\r\n"
                              b"\r\n")
            while not sim.state()["portal"]["hanging"]:
                pass
            sim.control("/fault", where="feed", kind="hang-handshake")
            stuck = socket.create_connection(("127.0.0.1", sim.ready["devices"][0]["port"]))
            self.addCleanup(stuck.close)
            secrets = sim.control("/secrets")[1]["secrets"]
            self.assertLessEqual({sim.token, "steps-and-stairs", "cookie-of-a-test"},
                                 set(secrets))
            code, seconds = sim.end(number)
            self.assertEqual((code, seconds < 3), (0, True), seconds)
            log = sim.log
            self.assertIn("a client is connected", log)
            self.assertFalse([secret for secret in secrets if secret in log])

    def test_wrong_command_lines_end_with_a_sentence(self):
        taken = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(taken.close)
        broken = self.folder() / "broken.json"
        broken.write_text('{"events": [[2, {}], [1, {}]]}')
        table = [(["--game", "curling"], "no game curling"),
                 (["--game", str(broken)], "in order of time"),
                 (["--cert", "only.crt"], "go together"), (["--speed", "0"], "above 0"),
                 (["--cert", "no.crt", "--key", "no.key"], "could not be read"),
                 (["--device", "A", "--device", "A"], "same id"),
                 (["--account", "nobody"], "EMAIL:PASSWORD"), (["--token", "X=1"], "no device"),
                 (["--usb", "X"], "no device"), (["--usb", f"TF-1001@{broken}"], "already"),
                 (["--usb", "TF-1001@/x", "--receiver", "TF-1001@/x"], "same path"),
                 (["--host", "256.1.1.1"], "not usable"),
                 (["--portal-port", str(taken.getsockname()[1])], "Could not listen")]
        for options, words in table:
            with self.subTest(options=options):
                done = subprocess.run([sys.executable, SIM, *FREE_PORTS, *options], timeout=10,
                                      capture_output=True, text=True, check=False)
                self.assertNotEqual(done.returncode, 0)
                self.assertIn(words, done.stderr)
                self.assertNotIn("Traceback", done.stderr)
                self.assertEqual(done.stdout, "")
        self.assertTrue(broken.read_text(), "what stood at a port's path is still there")


if __name__ == "__main__":
    unittest.main()
