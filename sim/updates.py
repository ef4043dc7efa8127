# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The maker's web server, as far as updates go: the manifest and the packages, from a folder."""

import asyncio
import json
import re
from collections import deque
from pathlib import Path

from faults import Hanging, trickled
from httpd import HttpServer, Response, in_one
from venue import KEPT

FOLDER = "/downloads/obs/"
MANIFEST = "latest.json"
AGENT = re.compile(r"Tallyforge-OBS/\d+\.\d+\.\d+(-[0-9A-Za-z.]+)? \((macos|linux)-\w+\)")
NAME = re.compile(r"\w[\w.+-]*")
PIECE = 1 << 16


async def _file(path):
    with open(path, "rb") as file:
        while piece := file.read(PIECE):
            yield piece


async def _endless():
    while True:
        yield b" " * PIECE
        await asyncio.sleep(0)   # a client that reads fast must not keep others waiting


class Updates(Hanging):
    def __init__(self, venue, faults, host, port, folder, tls):
        self._venue = venue
        self._faults = faults
        self._folder = Path(folder)
        self._log = deque(maxlen=KEPT)
        self._server = HttpServer(host, port, self._handle, tls, self._violation)
        self.listener = self._server.listener

    def url(self, host):
        return f"https://{host}:{self.listener.port}{FOLDER}{MANIFEST}"

    def shown(self):
        return {"requests": list(self._log), "hanging": self.hanging}

    def apply_faults(self):
        if self._faults.updates.refuse:
            self.listener.shut()
            self.listener.drop_connections()
        else:
            self.listener.open()

    def _violation(self, rule):
        self._venue.violation(f"updates: {rule}")

    def _check(self, request):
        headers = request.headers
        if request.method != "GET" or request.body:
            self._violation("a request is no plain GET")
        if not AGENT.fullmatch(headers.get("user-agent", "")):
            self._violation("the header User-Agent is not Tallyforge-OBS/, a version and a platform")
        if request.path == FOLDER + MANIFEST and headers.get("accept") != "application/json":
            self._violation("the header Accept is not application/json")
        for name in {"cookie", "authorization", "referer"} & set(headers):
            self._violation(f"the header {name} has no place here")

    async def _handle(self, request):
        self._check(request)
        entry = {"path": request.path, "agent": request.headers.get("user-agent"),
                 "accept": request.headers.get("accept"), "status": None, "sent": 0}   # of the body
        self._log.append(entry)
        fault = self._faults.updates.take(request.path)
        kind = fault and fault.kind
        if kind == "hang":
            await self._hang(fault)
        if kind == "redirect":
            response = Response(302, b"", [("Location", fault.to)])
        elif kind == "status":
            body = fault.body
            response = Response(fault.status, body.encode() if isinstance(body, str) else body)
        elif kind == "garbage":
            response = Response(200, b"<html><body>Sign in to the venue's Wi-Fi</body></html>")
        elif kind == "endless":
            response = Response(200, pieces=_endless())
        else:
            response = self._stored(request.path.removeprefix(FOLDER), fault)
        entry["status"] = response.status
        if response.pieces is not None:
            response.pieces = self._counted(response.pieces, entry)
        return response

    @staticmethod
    async def _counted(pieces, entry):
        async for piece in pieces:
            entry["sent"] += len(piece)
            yield piece

    def _stored(self, name, fault):
        path = self._folder / name
        if not NAME.fullmatch(name) or not path.is_file():
            return Response(404, b"There is no such file.\n")
        kind = fault and fault.kind
        pieces, length = _file(path), path.stat().st_size
        if name == MANIFEST and kind in ("wrong-hash", "wrong-size"):
            data = self._spoiled(path, kind)
            pieces, length = in_one(data), len(data)
        if kind == "cut":
            pieces = self._part(pieces, length // 2)
        elif kind == "stall":
            pieces = self._part(pieces, length // 2, fault)
        elif kind == "trickle":
            pieces = trickled(pieces, fault)
        # The header tells the whole body's length, so the connection ends with the half.
        return Response(200, pieces=pieces, length=length, cut=kind == "cut",
                        kind="application/json" if name == MANIFEST else "application/zip")

    @staticmethod
    def _spoiled(path, kind):
        """The manifest with the fault's values in every package's entry."""
        manifest = json.loads(path.read_bytes())
        for package in manifest["packages"].values():
            if kind == "wrong-hash":
                package["sha256"] = package["sha256"][::-1]
            else:
                package["size"] += 1
        return json.dumps(manifest).encode()

    async def _part(self, pieces, length, fault=None):
        """The first bytes alone; with a fault, the others once it is over."""
        async for piece in pieces:
            yield piece[:length]
            rest, length = piece[length:], max(0, length - len(piece))
            if length:
                continue
            if fault is None:
                return
            await self._hang(fault)
            yield rest
