# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The cloud portal: sign-in, the account's devices, their state, and graphics outputs."""

import asyncio
import json
import re
from email.utils import formatdate
from time import time
from urllib.parse import unquote

from commands import NAMES, Commands, Unreached
from faults import Hanging, trickled
from httpd import HttpServer, Response, in_one
from net import first_of, log
from venue import KEPT, VERSION, now_ms, same_secret

COOKIE = "tf_session"
COOKIE_SECONDS = 30 * 24 * 3600
AGENT = re.compile(r"Tallyforge-OBS/\d+\.\d+\.\d+(-[0-9A-Za-z.]+)?")
CARRIERS = ("usb", "ble", "manual")

NOT_SIGNED_IN = {"detail": {"error": "not_authenticated"}}
NOT_YOURS = {"detail": {"error": "device_not_found_or_not_owned"}}
UNREACHED = {"detail": {"error": "device_unreachable_or_timeout"}}


class Refusal(Exception):
    """An answer other than success; with `broken`, the request broke the wire format."""

    def __init__(self, status, body, broken=None):
        super().__init__(status)
        self.response = Response(status, body)
        self.broken = broken


def broken(reason, status=400):
    return Refusal(status, {"detail": "Bad request: " + reason}, reason)


def _check_headers(request):
    for name, value in (("Content-Type", "application/json"), ("Accept", "application/json")):
        if request.headers.get(name.lower()) != value:
            raise broken(f"the header {name} is not {value}")
    if not AGENT.fullmatch(request.headers.get("user-agent", "")):
        raise broken("the header User-Agent is not Tallyforge-OBS/ and a version")


def _body(request, **kinds):
    """The request's JSON object, which must have exactly these keys, each of its type."""
    try:
        body = json.loads(request.body)
    except (ValueError, RecursionError):
        raise broken("the body is not JSON") from None
    if not isinstance(body, dict) or set(body) != set(kinds):
        raise broken(f"the body's keys are not exactly {', '.join(kinds)}")
    for key, kind in kinds.items():
        if not isinstance(body[key], kind):
            raise broken(f"{key} is of the wrong JSON type")
    return body


def _trimmed(body, key):
    if body[key] != body[key].strip():
        raise broken(f"{key} has blanks around it")
    return body[key]


def _cookie(value, seconds):
    expires = formatdate(time() + seconds, usegmt=True)
    return ("Set-Cookie", f"{COOKIE}={value}; Max-Age={seconds}; Expires={expires}; Path=/; "
                          "HttpOnly; Secure; SameSite=Lax")


class Portal(Hanging):
    def __init__(self, venue, faults, host, port, tls, admins):
        self._venue = venue
        self.commands = Commands(venue.devices, admins, self.status)
        self._faults = faults
        self.requests = 0
        self.by_path = {}
        self.links = []        # devices that were added to an account, and how
        self._server = HttpServer(host, port, self._handle, tls, self._not_http)
        self.listener = self._server.listener

    def apply_faults(self):
        if self._faults.portal.refuse:
            self.listener.shut()
            self.listener.drop_connections()
        else:
            self.listener.open()
        self.commands.run_queue()

    def _not_http(self, reason):
        self._venue.violation(f"portal: {reason}")

    def _count(self, path):
        self.requests += 1
        if path in self.by_path or len(self.by_path) < KEPT:
            self.by_path[path] = self.by_path.get(path, 0) + 1

    async def _handle(self, request):
        self._count(request.path)
        try:
            _check_headers(request)
            fault = self._faults.portal.take(request.path)
            if fault and fault.kind in ("garbage", "status"):
                return self._faulty(fault)
            if fault:
                await self._delay(fault)
            response = self._answer(request)
            response.cut = bool(fault) and fault.kind == "cut"
            return self._trickling(response, fault) if fault and fault.kind == "trickle" else response
        except Refusal as refusal:
            if refusal.broken:
                # The first two words of a path name the call; what follows may be an id.
                call = "/".join(request.path.split("/")[:3])
                self._venue.violation(f"portal {request.method} {call}: {refusal.broken}")
            return refusal.response

    @staticmethod
    def _trickling(response, fault):
        body = json.dumps(response.body).encode()
        return Response(response.status, headers=response.headers, kind="application/json",
                        pieces=trickled(in_one(body), fault), length=len(body))

    @staticmethod
    def _faulty(fault):
        if fault.kind == "garbage":
            return Response(200, b"<html><body>Welcome to the venue's Wi-Fi</body></html>")
        body = fault.body.encode() if isinstance(fault.body, str) else fault.body
        return Response(fault.status, body)

    async def _delay(self, fault):
        if fault.kind == "hang":
            await self._hang(fault)
        elif fault.kind == "slow":
            await first_of(fault.over.wait(), asyncio.sleep(fault.seconds))

    def _answer(self, request):
        parts = request.path.split("/")[1:]
        pattern = tuple("*" if n == 1 and parts[0] == "devices" and len(parts) > 2 else part
                        for n, part in enumerate(parts))
        if pattern[:3] == ("devices", "*", "cmd") and len(parts) == 4:
            pattern = ("devices", "*", "cmd", "*")
        route = ROUTES.get("/".join(pattern))
        if not route:
            raise broken("there is no such path", 404)
        method, action, takes_body, signed_in = route
        if method != request.method:
            raise broken(f"the method must be {method}", 405)
        if request.body and not takes_body:
            raise broken("this call takes no body")
        email = self._venue.sessions.get(request.cookies.get(COOKIE))
        if signed_in and email is None:
            raise Refusal(401, NOT_SIGNED_IN)
        return action(self, request, [unquote(part) for part in parts])

    # Signing in and out

    def _signed_in(self, email):
        account = self._venue.accounts[email]
        return {"user": {"email": account.email, "role": account.role}}

    def _welcome(self, email):
        log(f"portal: {email} signed in")
        cookie = self._venue.open_session(email)
        return Response(200, self._signed_in(email), [_cookie(cookie, COOKIE_SECONDS)])

    def login(self, request, _):
        body = _body(request, email=str, password=str)
        account = self._venue.accounts.get(_trimmed(body, "email"))
        if not account or not same_secret(body["password"], account.password):
            log("portal: a sign-in was refused")
            raise Refusal(401, {"detail": {"error": "invalid_credentials"}})
        if not account.code:
            return self._welcome(account.email)
        challenge = self._venue.open_challenge(account.email)
        return Response(200, {"totp_required": True, "challenge_id": challenge})

    def login_totp(self, request, _):
        body = _body(request, challenge_id=str, code=str)
        challenge = body["challenge_id"]
        if challenge not in self._venue.challenges:
            raise broken("this challenge_id was never dealt")
        email = self._venue.challenges[challenge]
        if email is None:
            raise Refusal(401, {"detail": "This sign-in is over. Start again."})
        if not same_secret(_trimmed(body, "code"), self._venue.accounts[email].code):
            raise Refusal(401, {"error": "invalid_totp_code"})
        self._venue.challenges[challenge] = None
        return self._welcome(email)

    def me(self, request, _):
        return Response(200, self._signed_in(self._venue.sessions[request.cookies[COOKIE]]))

    def logout(self, request, _):
        if self._venue.sessions.pop(request.cookies.get(COOKIE), None):
            log("portal: signed out")
        return Response(200, {"ok": True}, [_cookie("", 0)])

    # Devices

    def status(self, device):
        """The portal's word for the device."""
        return self._faults.device.get(device.id) or ("online" if device.online else "offline")

    def _device(self, device_id):
        device = self._venue.devices.get(device_id)
        if not device or self.status(device) == "gone":
            raise Refusal(404, NOT_YOURS)
        return device

    def _present(self):
        return [d for d in self._venue.devices.values() if self.status(d) != "gone"]

    def devices(self, *_):
        return Response(200, {"devices": [
            {"device_id": device.id, "nickname": device.nickname, "status": self.status(device),
             "ble_passkey": device.passkey} for device in self._present()]})

    def state(self, _, parts):
        device = self._device(parts[1])
        status = self.status(device)
        if status == "pending":
            return Response(200, {"type": "pending", "device_id": device.id})
        envelope = device.raw
        if envelope is None:
            envelope = {"type": "state", "seq": device.seq, "ts_ms": now_ms(), "v": VERSION,
                        "sport": device.sport, "online": status == "online",
                        "device_ts_ms": device.ts_ms, "fw_version": device.firmware,
                        "transport": "wifi", "fields": device.fields}
        revision = device.revision
        return Response(200, envelope,
                        on_write=lambda moment: device.portal_sent.add(revision, moment))

    def command(self, request, parts):
        _body(request, args=dict)
        device, command = self._device(parts[1]), parts[3]
        if command not in NAMES:
            raise broken("there is no such command")
        try:
            return Response(200, self.commands.run(device, command))
        except Unreached:
            raise Refusal(504, UNREACHED) from None

    def config(self, request, parts):
        device = self._device(parts[1])
        config = _body(request, config=dict)["config"]
        try:
            self.commands.configure(device, config)
        except Unreached:
            raise Refusal(504, UNREACHED) from None
        return Response(200, {"ok": True})

    def link(self, request, _):
        keys = {"device_id": str, "via": str}
        if b'"code"' in request.body:
            keys["code"] = str
        body = _body(request, **keys)
        if body["via"] not in CARRIERS:
            raise broken(f"via is none of {', '.join(CARRIERS)}")
        device = self._venue.devices.get(body["device_id"])
        if not device:
            raise Refusal(404, NOT_YOURS)
        if body.get("code") == "":
            raise broken("code is empty and should have been left out")
        if "code" in body and _trimmed(body, "code") != device.claim_code:
            raise Refusal(409, {"error": "claim_code_device_mismatch"})
        if self.status(device) == "gone":
            del self._faults.device[device.id]
        if len(self.links) < KEPT:
            self.links.append({"device": device.id, "via": body["via"],
                               "with_code": "code" in body})
        return Response(200, {"ok": True, "device_id": device.id})

    def reveal_pairing(self, _, parts):
        device = self._device(parts[1])
        return Response(200, {"pairing": {"admin_password": device.admin_password,
                                          "ble_passkey": device.passkey}})

    def save_pairing(self, request, parts):
        device = self._device(parts[1])
        password = _body(request, admin_password=str)["admin_password"]
        if not password:
            raise broken("admin_password is empty")
        device.admin_password = self._venue.secret(password)
        return Response(200, {"ok": True})

    def outputs(self, *_):
        return Response(200, {"outputs": [
            {"id": f"scorebug-{device.id}", "name": f"Score bug {device.nickname or device.id}",
             "share_token": device.share_token, "device_id": device.id, "width": 1920,
             "height": 1080} for device in self._present()]})


ROUTES = {   # path -> method, action, whether it takes a body, whether it needs a session
    "auth/login": ("POST", Portal.login, True, False),
    "auth/login/totp": ("POST", Portal.login_totp, True, False),
    "auth/me": ("GET", Portal.me, False, True),
    "auth/logout": ("POST", Portal.logout, False, False),
    "devices": ("GET", Portal.devices, False, True),
    "devices/link": ("POST", Portal.link, True, True),
    "devices/*/state": ("GET", Portal.state, False, True),
    "devices/*/cmd/*": ("POST", Portal.command, True, True),
    "devices/*/config": ("POST", Portal.config, True, True),
    "devices/*/pairing": ("PUT", Portal.save_pairing, True, True),
    "devices/*/pairing/reveal": ("POST", Portal.reveal_pairing, False, True),
    "api/graphics/outputs": ("GET", Portal.outputs, False, True),
}
