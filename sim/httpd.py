# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A small HTTP/1.1 server with keep-alive, for the portal, the devices and the control port."""

import asyncio
import json
import time
from dataclasses import dataclass, field
from http import HTTPStatus

from net import Listener, first_of, streams

BODY_LIMIT = 1 << 20


class BadRequest(Exception):
    """Bytes that are no HTTP request; the text names the reason and quotes nothing."""


@dataclass
class Request:
    method: str
    target: str
    headers: dict
    body: bytes = b""

    @property
    def path(self):
        return self.target.partition("?")[0]

    @property
    def query(self):
        pairs = (pair.partition("=") for pair in self.target.partition("?")[2].split("&"))
        return {name: value for name, _, value in pairs if name}

    @property
    def cookies(self):
        pairs = (pair.partition("=") for pair in self.headers.get("cookie", "").split(";"))
        return {name.strip(): value.strip() for name, _, value in pairs}


@dataclass
class Response:
    status: int = 200
    body: object = None            # a JSON value, or bytes to be sent as they are
    headers: list = field(default_factory=list)
    cut: bool = False              # send half of the body, then close
    on_write: object = None        # called with the time right before the write
    pieces: object = None          # an async generator of the body's bytes, in place of body
    length: int = None             # of the pieces together; None: the connection's end is theirs
    kind: str = "text/plain; charset=utf-8"   # of a body that isn't a JSON value

    @property
    def ends_connection(self):
        return self.cut or (self.pieces is not None and self.length is None)

    def encoded(self, close):
        """All of it, but for the pieces."""
        raw = isinstance(self.body, bytes) or self.pieces is not None
        body = (self.body or b"") if raw else json.dumps(self.body).encode()
        length = len(body) if self.pieces is None else self.length
        bodiless = self.status in (204, 304)
        phrase = HTTPStatus(self.status).phrase if self.status in list(HTTPStatus) else "Status"
        head = [f"HTTP/1.1 {self.status} {phrase}", *(f"{n}: {v}" for n, v in self.headers),
                f"Connection: {'close' if close else 'keep-alive'}", "Cache-Control: no-store"]
        if not bodiless:
            head.append(f"Content-Type: {self.kind if raw else 'application/json'}")
            head += [] if length is None else [f"Content-Length: {length}"]
        if self.cut:
            body = body[:len(body) // 2]
        return "\r\n".join([*head, "", ""]).encode() + (b"" if bodiless else body)


async def in_one(data):
    """The pieces of a response that is whole already."""
    yield data


def _parse_head(head):
    lines = head.decode("latin-1").split("\r\n")
    parts = lines[0].split(" ")
    if len(parts) != 3 or parts[2] not in ("HTTP/1.1", "HTTP/1.0") or not parts[1].startswith("/"):
        raise BadRequest("the first line is no HTTP request")
    headers = {}
    for line in filter(None, lines[1:]):
        name, colon, value = line.partition(":")
        if not colon:
            raise BadRequest("a header without a colon")
        if name.lower() in headers:
            raise BadRequest("a header comes twice")
        headers[name.lower()] = value.strip(" \t")
    return Request(parts[0], parts[1], headers), parts[2] == "HTTP/1.0"


async def _read_request(reader):
    try:
        head = await reader.readuntil(b"\r\n\r\n")
    except asyncio.LimitOverrunError as error:
        raise BadRequest("the headers are too long") from error
    request, close = _parse_head(head)
    if "transfer-encoding" in request.headers:
        raise BadRequest("a body without Content-Length")
    length = request.headers.get("content-length", "0")
    if not length.isascii() or not length.isdigit() or int(length) > BODY_LIMIT:
        raise BadRequest("Content-Length is no usable number")
    request.body = await reader.readexactly(int(length))
    return request, close or request.headers.get("connection", "").lower() == "close"


class HttpServer:
    """Hands each request to `handle`, a coroutine that returns the Response."""

    def __init__(self, host, port, handle, tls=None, on_bad_request=None):
        self._handle = handle
        self._tls = tls
        self._on_bad_request = on_bad_request
        self.listener = Listener(host, port, self._serve)

    async def _serve(self, sock):
        reader, writer, lost = await streams(sock, self._tls)
        try:
            while not await self._exchange(reader, writer, lost):
                pass
            writer.close()
            await lost.wait()
        finally:
            writer.transport.abort()

    async def _exchange(self, reader, writer, lost):
        """One request and its response; true if the connection is to be closed after it."""
        try:
            request, close = await _read_request(reader)
        except BadRequest as error:
            if self._on_bad_request:
                self._on_bad_request(str(error))
            request, close = None, True
        if request is None:
            response = Response(400, {"error": "bad_request"})
        else:
            response = await self._response(request, lost)
        close = close or response.ends_connection
        data = response.encoded(close)
        if response.on_write:
            response.on_write(time.monotonic_ns())
        writer.write(data)
        await writer.drain()
        if response.pieces is not None:
            work = asyncio.ensure_future(self._send(writer, response.pieces))
            await self._unless_lost(work, lost)
        return close

    @staticmethod
    async def _send(writer, pieces):
        async for piece in pieces:
            writer.write(piece)
            await writer.drain()

    async def _response(self, request, lost):
        """The handler's answer; a client that leaves meanwhile ends the handler."""
        return await self._unless_lost(asyncio.ensure_future(self._handle(request)), lost)

    @staticmethod
    async def _unless_lost(work, lost):
        await first_of(work, lost.wait())
        if work.cancelled():
            raise ConnectionResetError
        return work.result()
