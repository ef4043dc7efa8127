# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's administration on the local network: plain HTTP, a session cookie, a CSRF token."""

import asyncio
import json
import secrets
from collections import deque
from urllib.parse import parse_qsl

from admin import DURATIONS, Refused, Session
from httpd import HttpServer, Response
from net import first_of, log, quoted_host
from rpc import is_compact

COOKIE = "tf_device"
KEPT_SESSIONS = 8
JSON, FORM = "application/json", "application/x-www-form-urlencoded"

ROUTES = {   # (verb, path) -> method; what is posted is JSON
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
STATUSES = {   # of what the administration refuses; anything else is 400
    "unauthorized": 401, "invalid_credentials": 401, "password_change_required": 403,
    "rate_limited": 429,
}


class Broken(Exception):
    """A request that breaks the rules of the interface."""

    def __init__(self, rule, status=400):
        super().__init__(rule)
        self.status = status


class SignIn:
    """What a login has begun: its token, and the session of the administration."""

    def __init__(self, secret):
        self.secret = secret
        self.session = Session("lan")
        self.renew()

    def renew(self):
        self.token = self.secret(secrets.token_urlsafe(16))


def _pairs(body):
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
    """What the request hands to the method."""
    kind = request.headers.get("content-type")
    if request.method == "GET":
        if request.body or kind is not None or "?" in request.target:
            raise Broken("a GET has a body, its type, or a query")
        return {}
    wanted = FORM if method in FORMS else JSON
    if kind != wanted:
        raise Broken(f"the header Content-Type is not {wanted}")
    return (_pairs if method in FORMS else _object)(request.body)


class LanFace:
    def __init__(self, venue, faults, admin, port):
        self._venue = venue
        self._faults = faults
        self._admin = admin
        self._device = admin.device
        self._sign_ins = {}                  # cookie -> SignIn
        self._past = deque(maxlen=1000)      # cookies and tokens that were dealt, and have ended
        self._kept = {}                      # what was stored here that nothing else reads
        self.requests = {}                   # method -> how often
        self.hanging = 0
        self._server = HttpServer(self._device.address, port, self._handle,
                                  on_bad_request=self._violation)
        self.listener = self._server.listener
        admin.on_restart.append(self._restart)

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
        if self._admin.down or self._faults.lan.refuses(self._device.id):
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
        sign_in, refusal = self._who(request, method)
        fault = self._faults.lan.take(self._device.id, method)
        kind = fault and fault.kind
        if kind == "status":
            return Response(fault.status, fault.answer)
        if kind == "hang":
            await self._hang(fault)
        elif kind == "slow":
            await first_of(fault.over.wait(), asyncio.sleep(fault.seconds))
        response = refusal or await self._answer(method, params, sign_in)
        if kind == "drop":
            raise ConnectionResetError    # it was done, and nobody is told
        if kind == "garbage":
            return Response(200, b"<html><body>Sign in to the venue's Wi-Fi</body></html>")
        response.cut = kind == "cut"
        return response

    async def _hang(self, fault):
        self.hanging += 1
        try:
            await fault.over.wait()
        finally:
            self.hanging -= 1

    async def _answer(self, method, params, sign_in):
        try:
            if method == "login":
                return self._login(params)
            await self._admin.clock.sleep(DURATIONS.get(method, 0))
            if method in OPAQUE:
                return Response(200, OPAQUE[method](self, params))
            return Response(200, self._admin.handle(method, params, sign_in.session))
        except Refused as refused:
            status = STATUSES.get(refused.code, 400)
            key = "code" if status == 400 else "error"
            return Response(status, {key: refused.code, "message": str(refused)})

    def _who(self, request, method):
        """The sign-in that a request belongs to, or the answer that refuses it."""
        cookie, token = request.headers.get("cookie"), request.headers.get("x-csrf-token")
        # Whoever looks whether there is a device at all says nothing of itself.
        probe = method == "getStatus" and cookie is None
        if not probe and request.headers.get("accept") != JSON:
            raise Broken(f"the header Accept is not {JSON}")
        if (cookie is None) != (token is None):
            raise Broken("the session's cookie and the CSRF token do not come together")
        if cookie is None and not probe and method != "login":
            raise Broken("it came before the sign-in", 401)
        name, _, value = (cookie or "").partition("=")
        sign_in = self._sign_ins.get(value)
        if cookie is not None and (name != COOKIE or not (sign_in or value in self._past)):
            raise Broken("the cookie was never dealt", 401)
        if token is not None and token not in self._past and not (
                sign_in and token == sign_in.token):
            raise Broken("the CSRF token was never dealt with this cookie", 403)
        if method == "login":
            return None, None
        if not sign_in:
            return None, Response(401, {"error": "unauthorized", "message": "Sign in first."})
        if token != sign_in.token:
            return None, Response(403, {"error": "csrf_invalid"})
        return sign_in, None

    def _login(self, params):
        sign_in = SignIn(self._venue.secret)
        result = self._admin.handle("login", params, sign_in.session)
        while len(self._sign_ins) >= KEPT_SESSIONS:
            oldest = next(iter(self._sign_ins))
            self._past += [oldest, self._sign_ins.pop(oldest).token]
        cookie = self._venue.secret(secrets.token_urlsafe(24))
        self._sign_ins[cookie] = sign_in
        log(f"lan {self._device.id}: somebody signed in")
        return Response(200, {**result, "csrf_token": sign_in.token},
                        [("Set-Cookie", f"{COOKIE}={cookie}; Path=/; HttpOnly; SameSite=Strict")])

    def _keep(self, name, params):
        self._kept[name] = params
        return {}


OPAQUE = {   # routes that a device has, whose contents mean nothing here
    "getMqttConfig": lambda face, _: face._kept.get("broker", {}),
    "setMqttConfig": lambda face, params: face._keep("broker", params),
    "provision": lambda face, params: face._keep("provision", params),
}
