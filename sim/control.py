# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The control port: a test or a rehearsing crew looks in and changes things through it."""

from functools import partial

from control_hardware import HardwareControl, ROUTES as HARDWARE_ROUTES
from faults import FaultError, PASSING
from httpd import HttpServer, Response
from lan_admin import ROUTES as LAN_ROUTES
from net import ListenError, log
from wishes import ControlError, body_of, take

PLACES = ("portal", "updates", "feed", "device", "usb", "lan")


class Control:
    def __init__(self, port, venue, faults, portal, feeds, hardware, lan, updates, game):
        self._venue = venue
        self._faults = faults
        self._portal = portal
        self._feeds = feeds   # device id -> Feed
        self._hardware = HardwareControl(hardware, self._device)
        self._lan = lan       # device id -> LanFace
        self._updates = updates   # or None
        self._game = game     # how the game was started, for /state
        self._server = HttpServer("127.0.0.1", port, self._handle)
        self.listener = self._server.listener

    async def _handle(self, request):
        route = request.method, request.path
        try:
            if route in ROUTES:
                return Response(200, ROUTES[route](self, request))
            if route in HARDWARE_ROUTES:
                return Response(200, HARDWARE_ROUTES[route](self._hardware, request))
            raise ControlError("There is no such request here. Known are " + ", ".join(
                " ".join(route) for route in [*ROUTES, *HARDWARE_ROUTES]) + ".", 404)
        except ControlError as error:
            return Response(error.status, {"error": str(error)})
        except FaultError as error:
            return Response(400, {"error": str(error)})
        except ListenError as error:
            return Response(500, {"error": str(error)})

    def _device(self, device_id):
        if device_id is None:
            return next(iter(self._venue.devices.values()))
        if not isinstance(device_id, str) or device_id not in self._venue.devices:
            raise ControlError("There is no such device.", 404)
        return self._venue.devices[device_id]

    def state(self, _):
        venue, portal = self._venue, self._portal
        return {
            "revision": venue.revision,
            "devices": {d.id: {"fields": d.fields, "sport": d.sport,
                               "online": self._online(d), "status": portal.status(d),
                               "feed_clients": d.feed_clients, "feed_auths": d.feed_auths,
                               "feed_connects": d.feed_connects,
                               **self._hardware.shown(d),
                               "lan": self._lan[d.id].shown() if d.id in self._lan else None}
                        for d in venue.devices.values()},
            "portal": {"requests": portal.requests, "by_path": portal.by_path,
                       "sessions": len(venue.sessions), "hanging": portal.hanging,
                       "links": portal.links, "queued": portal.commands.queued},
            "updates": self._updates and self._updates.shown(),
            "faults": self._faults.shown(),
            "violations": venue.violations,
            "game": {**self._game, "devices": {
                d.id: {"event": d.game.position, "events": len(d.game.script.events),
                       "elapsed": round(d.game.elapsed, 1), "finished": d.game.finished}
                for d in venue.devices.values()}},
        }

    def _online(self, device):
        return device.online and self._faults.device.get(device.id) != "offline"

    def secrets(self, _):
        devices = {d.id: {"token": d.token, "claim_code": d.claim_code,
                          "admin_password": d.admin_password, "passkey": d.passkey,
                          "device_password": self._hardware.password(d)}
                   for d in self._venue.devices.values()}
        return {"secrets": list(self._venue.secrets), "devices": devices}

    def step(self, request):
        count, device_id = take(body_of(request), count=int, device=str)
        if count is not None and not 1 <= count <= 100000:
            raise ControlError("count must be a whole number from 1 to 100000.")
        device = self._device(device_id)
        before = device.game.position
        fields = device.game.step(count or 1)
        if device.game.position != before:
            self._venue.change(device, fields)
        return {"revision": self._venue.revision, "fields": device.fields,
                "finished": device.game.finished}

    def set(self, request):
        device_id, fields, sport, online, raw = take(
            body_of(request), device=str, fields=dict, sport=str, online=bool, raw=dict)
        moments = self._venue.change(self._device(device_id), fields, sport, online, raw)
        self._portal.commands.run_queue()
        return {"revision": self._venue.revision, **moments}

    def sent(self, request):
        number = request.query.get("revision", "")
        if not (number.isascii() and number.isdigit() and len(number) < 16):
            raise ControlError("Ask for /sent?revision=N with a whole number.")
        device = self._venue.owner(int(number))
        if not device:
            raise ControlError("There is no such revision, or it is long past.", 404)
        return {"revision": int(number), "feed_ns": device.feed_sent.find(int(number)),
                "usb_ns": device.usb_sent.find(int(number)),
                "portal_ns": device.portal_sent.find(int(number))}

    def fault(self, request):
        wish = body_of(request)
        where = wish.get("where")
        if where == "portal":
            self._faults.portal.set(wish)
            self._portal.apply_faults()
        elif where == "updates":
            if not self._updates:
                raise ControlError("There are no updates without --updates.", 404)
            self._faults.updates.set(wish)
            self._updates.apply_faults()
        elif where in ("feed", "device"):
            _, kind, device_id = take(wish, where=str, kind=str, device=str)
            ids = [self._device(device_id).id] if device_id else list(self._venue.devices)
            self._change_faults(partial(self._faults.set_devices, where, kind, ids),
                                kind if where == "feed" and kind in PASSING else None, ids)
        elif where == "usb":
            device_id = wish.get("device")
            ids = [self._device(device_id).id] if device_id else list(self._venue.devices)
            self._faults.usb.set(wish, ids)
            self._hardware.apply_faults()
        elif where == "lan":
            self._lan_fault(wish)
        else:
            raise ControlError(f"where must be one of {', '.join(PLACES)}.")
        log(f"fault on: {where} {wish.get('kind')}")
        return {"faults": self._faults.shown()}

    def _lan_fault(self, wish):
        if not self._lan:
            raise ControlError("The devices have no local interface without --lan-port.", 404)
        device_id = wish.get("device")
        ids = [self._device(device_id).id] if device_id else list(self._venue.devices)
        passing = self._faults.lan.set(wish, ids, LAN_ROUTES.values())
        for device_id in ids:
            self._lan[device_id].apply_faults(passing)

    def clear(self, request):
        where, = take(body_of(request), where=str)
        if where == "violations":
            self._venue.violations.clear()
        elif where is not None and where not in PLACES:
            raise ControlError(f"where must be one of {', '.join(PLACES)}, violations.")
        else:
            self._change_faults(partial(self._faults.clear, where))
            self._portal.apply_faults()
            self._hardware.apply_faults()
            for face in [*self._lan.values(), *([self._updates] if self._updates else [])]:
                face.apply_faults()
            log(f"faults off: {where or 'all'}")
        return {"faults": self._faults.shown()}

    def _change_faults(self, change, passing=None, passing_ids=()):
        before = dict(self._faults.feed)
        change()
        for device_id, feed in self._feeds.items():
            feed.apply_faults(before.get(device_id),
                              passing if device_id in passing_ids else None)

    def session(self, request):
        revoke, = take(body_of(request), revoke=bool)
        if not revoke:
            raise ControlError("This request takes {\"revoke\": true} alone.")
        self._venue.sessions.clear()
        log("portal: all sessions were revoked")
        return {"sessions": 0}

    def pairing(self, request):
        device_id, password = take(body_of(request), device=str, admin_password=str)
        if password is None:
            raise ControlError("This request takes the admin_password that the account keeps.")
        device = self._device(device_id)
        device.admin_password = password and self._venue.secret(password)
        return {"known": bool(password)}


ROUTES = {
    ("GET", "/state"): Control.state,
    ("GET", "/secrets"): Control.secrets,
    ("GET", "/sent"): Control.sent,
    ("POST", "/step"): Control.step,
    ("POST", "/set"): Control.set,
    ("POST", "/fault"): Control.fault,
    ("POST", "/clear"): Control.clear,
    ("POST", "/session"): Control.session,
    ("POST", "/pairing"): Control.pairing,
}
