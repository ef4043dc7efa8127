# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's administration on the local network: plain HTTP, a session cookie, a CSRF token."""

import asyncio
import json
import re
import secrets
from collections import deque
from urllib.parse import parse_qsl

from admin import DURATIONS
from faults import Hanging
from httpd import HttpServer, Response
from net import first_of, log, quoted_host
from rpc import is_compact
from signin import Refused, Session

COOKIE = "tf_device"
KEPT_SESSIONS = 8
JSON, FORM = "application/json", "application/x-www-form-urlencoded"
FORM_TEXT = re.compile(rb"(?:[\w.~*&=+-]|%[0-9A-Fa-f]{2})*")   # a "+" is a blank
SPOILING = ("status", "cut", "garbage")   # a client takes their 200 for the device's own

ROUTES = {   # (verb, path) -> method; a body is JSON, or one of FORMS
    ("POST", "/login"): "login",
    ("GET", "/api/status"): "getStatus",
    ("GET", "/api/network-test"): "networkTest",
    ("POST", "/api/auth/change-password"): "changePassword",
    ("POST", "/api/auth/api-token"): "ensureApiToken",
    ("GET", "/api/settings"): "getSettings",
    ("POST", "/api/settings"): "setSettings",
    ("GET", "/api/controller/list"): "getControllerList",
    ("GET", "/api/controller/config"): "getControllerConfig",
    ("POST", "/api/controller/config"): "setControllerConfig",
    ("GET", "/scan"): "scanWifi",
    ("POST", "/configure"): "configureWifi",
    ("GET", "/state"): "getState",
    ("POST", "/api/system/reboot"): "reboot",
    ("GET", "/ota/check"): "otaCheck",
    ("POST", "/ota/apply"): "otaApply",
    ("GET", "/ota/progress"): "otaProgress",
    ("GET", "/api/system/c6-ota"): "c6OtaStatus",
    ("POST", "/api/system/c6-ota"): "c6OtaApply",
    ("GET", "/api/mqtt/broker"): "getMqttConfig",
    ("POST", "/api/mqtt/broker"): "setMqttConfig",
    ("GET", "/api/device-id"): "getDeviceId",
    ("POST", "/api/device-id"): "setDeviceId",
    ("POST", "/api/provision"): "provision",
    ("GET", "/api/auth/ble-passkey"): "blePasskey",
}
FORMS = {"configureWifi"}
STATUSES = {   # code of a refusal -> status; any other code gives 400
    "unauthorized": 401, "invalid_credentials": 401, "password_change_required": 403,
    "rate_limited": 429,
}


class Broken(Exception):
    """A request that breaks the rules of the interface."""

    def __init__(self, rule, status=400):
        super().__init__(rule)
        self.status = status


class SignIn:
    """A sign-in: its token, and its session of the administration."""

    def __init__(self, secret):
        self.secret = secret
        self.session = Session("lan")
        self.renew()

    def renew(self):
        self.token = self.secret(secrets.token_urlsafe(16))


def _pairs(body):
    if not FORM_TEXT.fullmatch(body):
        raise Broken("the body is not form-encoded")
    try:
        pairs = parse_qsl(body.decode("ascii"), keep_blank_values=True, strict_parsing=bool(body),
                          errors="strict")
    except ValueError:
        raise Broken("the body is not form-encoded") from None
    if len(dict(pairs)) < len(pairs):
        raise Broken("the form has a key twice")
    return dict(pairs)


def _object(body):
    try:
        params = json.loads(body)
    except (ValueError, RecursionError):
        raise Broken("the body is not JSON") from None
    if not isinstance(params, dict) or not is_compact(body):
        raise Broken("the body is not a compact JSON object")
    return params


def _params(request, method):
    """The method's params, from the request."""
    kind = request.headers.get("content-type")
    if "?" in request.target:
        raise Broken("there is a query")
    if request.method == "GET":
        if request.body or kind is not None:
            raise Broken("a GET has a body or its type")
        return {}
    wanted = FORM if method in FORMS else JSON
    if kind != wanted:
        raise Broken(f"the header Content-Type is not {wanted}")
    return (_pairs if method in FORMS else _object)(request.body)


class LanFace(Hanging):
    def __init__(self, venue, faults, admin, port):
        self._venue = venue
        self._faults = faults
        self._admin = admin
        self._device = admin.device
        self._sign_ins = {}                  # the header Cookie -> SignIn
        self._past = deque(maxlen=1000)      # cookies and tokens that were dealt, and have ended
        self._spoiled = False                # the last login's 200 was no proper answer
        self.requests = {}                   # method -> how often
        self._server = HttpServer(self._device.address, port, self._handle,
                                  on_bad_request=self._violation)
        self.listener = self._server.listener
        admin.power.hooks.append(self._restart)

    @property
    def url(self):
        return f"http://{quoted_host(self.listener.host)}:{self.listener.port}"

    def shown(self):
        return {"port": self.listener.port, "requests": self.requests,
                "sessions": len(self._sign_ins), "hanging": self.hanging}

    def apply_faults(self, passing=None):
        if passing == "expire":
            self._end_all()
        elif passing == "renew-token":
            for sign_in in self._sign_ins.values():
                self._past.append(sign_in.token)
                sign_in.renew()
        if self._admin.power.down or self._faults.lan.refuses(self._device.id):
            self.listener.shut()
            self.listener.drop_connections()
        else:
            self.listener.open()

    def _restart(self, _):
        self._end_all()
        self.apply_faults()

    def _end_all(self):
        for cookie, sign_in in self._sign_ins.items():
            self._past += [cookie, sign_in.token]
        self._sign_ins.clear()

    def _violation(self, rule):
        self._venue.violation(f"lan {self._device.id}: {rule}")

    async def _handle(self, request):
        route = request.method, request.path
        try:
            if route not in ROUTES:
                known = any(path == request.path for _, path in ROUTES)
                raise Broken("the verb does not fit the path" if known
                             else "there is no such path", 405 if known else 404)
            return await self._faulty(request, ROUTES[route])
        except Broken as broken:
            self._violation(f"{ROUTES.get(route, 'a request')}: {broken}")
            return Response(broken.status, {"error": "bad_request",
                                            "message": f"Bad request: {broken}."})

    async def _faulty(self, request, method):
        self.requests[method] = self.requests.get(method, 0) + 1
        params = _params(request, method)
        self._check_session(request, method)
        fault = self._faults.lan.take(self._device.id, method)
        kind = fault and fault.kind
        if kind == "hang":
            await self._hang(fault)
        elif kind == "slow":
            await first_of(fault.over.wait(), asyncio.sleep(fault.seconds))
        if kind == "status":
            response = Response(fault.status, fault.answer)
        else:
            response = await self._answer(request, method, params)
        if kind == "drop":
            raise ConnectionResetError    # it was done, and nobody is told
        if kind == "garbage":
            response = Response(200, b"<html><body>Sign in to the venue's Wi-Fi</body></html>")
        if method == "login" and 200 <= response.status < 300:
            self._spoiled = kind in SPOILING
        response.cut = kind == "cut"
        return response

    async def _answer(self, request, method, params):
        try:
            if method == "login":
                return self._login(params)
            sign_in = self._sign_ins.get(request.headers.get("cookie"))
            if not sign_in:
                raise Refused("unauthorized", "Sign in first.")
            if request.headers.get("x-csrf-token") != sign_in.token:
                return Response(403, {"error": "csrf_invalid"})
            await self._admin.clock.sleep(DURATIONS.get(method, 0))
            return Response(200, self._admin.handle(method, params, sign_in.session))
        except Refused as refused:
            status = STATUSES.get(refused.code, 400)
            key = "code" if status == 400 else "error"
            return Response(status, {key: refused.code, "message": str(refused)})

    def _check_session(self, request, method):
        """Objects to a cookie and a token that no client can have got from this device."""
        cookie, token = request.headers.get("cookie"), request.headers.get("x-csrf-token")
        half, bare = (cookie is None) != (token is None), cookie is None and token is None
        # A client that only looks whether there is a device sends no cookie yet.
        probe = method == "getStatus" and bare and "accept" not in request.headers
        if not probe and request.headers.get("accept") != JSON:
            raise Broken(f"the header Accept is not {JSON}")
        if half and not self._spoiled:
            raise Broken("the session's cookie and the CSRF token do not come together")
        if bare and not (probe or method == "login" or self._spoiled):
            raise Broken("it came before the sign-in", 401)
        sign_in = self._sign_ins.get(cookie)
        if cookie is not None and not sign_in and cookie not in self._past:
            raise Broken("the cookie was never dealt", 401)
        if token is not None and not half and token not in self._past and not (
                sign_in and token == sign_in.token):
            raise Broken("the CSRF token was never dealt with this cookie", 403)

    def _login(self, params):
        sign_in = SignIn(self._venue.secret)
        result = self._admin.handle("login", params, sign_in.session)
        while len(self._sign_ins) >= KEPT_SESSIONS:
            oldest = next(iter(self._sign_ins))
            self._past += [oldest, self._sign_ins.pop(oldest).token]
        cookie = f"{COOKIE}={self._venue.secret(secrets.token_urlsafe(24))}"
        self._sign_ins[cookie] = sign_in
        log(f"lan {self._device.id}: somebody signed in")
        return Response(200, {**result, "csrf_token": sign_in.token},
                        [("Set-Cookie", f"{cookie}; Path=/; HttpOnly; SameSite=Strict")])
