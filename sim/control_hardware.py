# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The control requests about the devices as things: their administration, ports and tunnels."""

from net import log
from tunnel import TunnelError, WINDOW
from upgrades import CHECKS
from usb_wire import PAYLOAD_LIMIT, TUNNEL_LIMIT, frame
from wifi import JOINS, Network
from wishes import ControlError, body_of, take

UPGRADE_KEYS = {"version": (str,), "offered": (str, type(None)), "error": (str,),
                "check_error": (str,), "bytes": (int,)}
COUNT_LIMIT = 1 << 28
LOG_LIMIT = 60000


def _within(value, low, high, name):
    if value is not None and not low <= value <= high:
        raise ControlError(f"{name} must be a number from {low} to {high}.")


def _one_of(actions):
    """The name of the one action that was asked for."""
    given = [name for name, value in actions.items() if value is not None]
    if len(given) != 1:
        raise ControlError(f"This request takes exactly one of {', '.join(actions)}.")
    return given[0]


def _hex(text):
    try:
        return bytes.fromhex(text)
    except ValueError:
        raise ControlError("The bytes must be given in hexadecimal digits.") from None


class HardwareControl:
    def __init__(self, hardware, find_device):
        self._hardware = hardware
        self._find_device = find_device

    def apply_faults(self):
        self._hardware.apply_faults()

    def password(self, device):
        return self._hardware.admins[device.id].password

    def _face(self, device_id, receiver):
        faces = self._hardware.faces
        name = "receiver" if receiver else "usb"
        if device_id is None:
            face = next((f for f in faces.values()
                         if receiver is None or f.name == name), None)
        else:
            device_id = self._find_device(device_id).id
            face = faces.get((device_id, name))
            if not face and receiver is None:
                face = faces.get((device_id, "receiver"))
        if not face:
            raise ControlError("There is no such port. Ports come from --usb and --receiver.", 404)
        return face

    def shown(self, device):
        admin = self._hardware.admins[device.id]
        upgrades = {name: {"version": upgrade.version, "state": upgrade.state()[0]}
                    for name, upgrade in (("firmware", admin.firmware), ("chip", admin.chip))
                    if upgrade}
        faces = {name: self._hardware.faces.get((device.id, name)) for name in ("usb", "receiver")}
        return {
            "admin": {"device_id": admin.device_id, "must_change_password": admin.must_change,
                      "logins": admin.logins, "requests": admin.requests,
                      "wifi": admin.wifi.status(), "radio": admin.radio.shown(),
                      "controller": admin.settings.choice, "settings": admin.settings.values,
                      "cloud_account": admin.cloud_account, "token_made": admin.token_made,
                      "restarts": admin.restarts, "down": admin.down, **upgrades},
            **{name: face and face.shown() for name, face in faces.items()}}

    # Administration

    def admin(self, request):
        body = body_of(request)
        admin = self._hardware.admins[self._find_device(body.pop("device", None)).id]
        values = dict(zip(ADMIN_KEYS, take(body, **{k: kind for k, (kind, _) in
                                                    ADMIN_KEYS.items()})))
        for key, value in values.items():
            if key in body:
                ADMIN_KEYS[key][1](admin, value)
        return self.shown(admin.device)["admin"]

    def pace(self, request):
        pace, = take(body_of(request), pace=float)
        if pace is None or not 0 < pace <= 10000:
            raise ControlError("pace must be a number above 0 and up to 10000.")
        self._hardware.clock.set_pace(pace)
        return {"pace": pace}

    # Ports and tunnels

    def replug(self, request):
        device_id, receiver, seconds = take(body_of(request), device=str, receiver=bool,
                                            seconds=float)
        _within(seconds, 0, 3600, "seconds")
        self._face(device_id, receiver).replug(0.5 if seconds is None else seconds)
        return {"replugged": True}

    def tell(self, request):
        body = body_of(request)
        if body.get("tunnel", 0) is None:
            body["tunnel"] = {}    # null: the device's own again
        device_id, receiver, tunnel = take(body, device=str, receiver=bool, tunnel=dict)
        if tunnel is None:
            raise ControlError("This request takes the tunnel to be told, or null.")
        face = self._face(device_id, receiver)
        face.told_tunnel = tunnel
        face.tell_tunnel(again=True)
        return {"tunnel": tunnel}

    def frame(self, request):
        device_id, receiver, kind, data, raw = take(
            body_of(request), device=str, receiver=bool, type=int, hex=str, raw=str)
        face = self._face(device_id, receiver)
        if _one_of({"hex": data, "raw": raw}) == "raw":
            return {"sent": face.port.send(_hex(raw))}
        payload = _hex(data)
        _within(255 if kind is None else kind, 0, 255, "type")
        _within(len(payload), 0, PAYLOAD_LIMIT, "the payload's length")
        return {"sent": face.port.send(frame(5 if kind is None else kind, payload))}

    def pipe(self, request):
        device_id, receiver, send, again, piece, seed, rate = take(
            body_of(request), device=str, receiver=bool, send=int, reset=bool, piece=int,
            seed=int, rate=int)
        tunnel = self._face(device_id, receiver).tunnel
        if _one_of({"send": send, "reset": again}) == "reset":
            tunnel.reset_pipe()
        else:
            self._check_sending(send, piece, rate, PAYLOAD_LIMIT)
            tunnel.send_pipe(send, seed or 0, piece or TUNNEL_LIMIT, rate)
        return tunnel.shown()["pipe"]

    @staticmethod
    def _check_sending(count, piece, rate, limit):
        _within(count, 1, COUNT_LIMIT, "send")
        _within(piece, 1, limit, "piece")
        _within(rate, 1, COUNT_LIMIT, "rate")

    def stream(self, request):
        device_id, receiver, name, window, number, send, piece, seed, rate, credit, close = take(
            body_of(request), device=str, receiver=bool, open=str, window=int, id=int, send=int,
            piece=int, seed=int, rate=int, credit=int, close=bool)
        tunnel = self._face(device_id, receiver).tunnel
        action = _one_of({"open": name, "send": send, "credit": credit, "close": close})
        _within(window, 0, 1 << 24, "window")
        _within(credit, 0, 0xFFFFFFFF, "credit")
        try:
            if action == "open":
                number = tunnel.open(name, WINDOW if window is None else window)
            elif action == "send":
                self._check_sending(send, piece, rate, PAYLOAD_LIMIT - 2)
                tunnel.send_stream(number, send, seed or 0, piece or TUNNEL_LIMIT, rate)
            elif action == "credit":
                tunnel.grant(number, credit)
            else:
                tunnel.close(number)
        except TunnelError as error:
            raise ControlError(str(error), 404) from None
        return {"id": number, **tunnel.streams[number].shown()}

    # The cloud that the tunnels lead to

    def _cloud(self):
        if not self._hardware.cloud:
            raise ControlError("There is no cloud without --usb or --receiver.", 404)
        return self._hardware.cloud

    def cloud(self, _):
        return self._cloud().shown()

    def steer_cloud(self, request):
        name, mode, count, send, seed, end, listen = take(
            body_of(request), target=str, mode=str, source_bytes=int, send=int, seed=int, end=str,
            listen=bool)
        target = self._cloud().targets.get(name)
        if not target:
            raise ControlError(f"target must be one of {', '.join(self._cloud().targets)}.")
        if mode not in (None, "echo", "sink", "source") or end not in (None, "close", "reset"):
            raise ControlError("mode is echo, sink or source; end is close or reset.")
        _within(count, 1, COUNT_LIMIT, "source_bytes")
        _within(send, 1, COUNT_LIMIT, "send")
        target.mode = mode or target.mode
        target.source_bytes = count or target.source_bytes
        if send and not target.send(send, seed or 0):
            raise ControlError("There is no connection to send on.", 409)
        if end:
            target.end_all(end == "reset")
        if listen is not None:
            (target.listener.open if listen else target.listener.shut)()
        log(f"cloud: {name} was told something new")
        return self._cloud().shown()[name]


def _set_networks(admin, networks):
    found = []
    for entry in networks:
        try:
            network = Network(**entry)
        except TypeError:
            network = None
        if not network or not isinstance(network.ssid, str) or network.joins not in JOINS \
                or not isinstance(network.password, str) or type(network.rssi) is not int:
            raise ControlError("A network is an object of ssid, password, rssi, auth and joins "
                               f"({', '.join(JOINS)}).")
        found.append(network)
    admin.wifi.networks = found


def _set_upgrade(upgrade, wish):
    for key, value in wish.items():
        if key not in UPGRADE_KEYS or type(value) not in UPGRADE_KEYS[key]:
            raise ControlError(f"An update takes {', '.join(UPGRADE_KEYS)}.")
    for key, value in wish.items():
        setattr(upgrade, "size" if key == "bytes" else key, value)


def _set_checks(admin, failing):
    if not set(failing) <= set(CHECKS) or not all(isinstance(v, str) for v in failing.values()):
        raise ControlError(f"checks tells why which of {', '.join(CHECKS)} fail.")
    admin.network_test.failing = failing


def _set_logs(admin, count):
    _within(count, 0, LOG_LIMIT, "log_bytes")
    admin.log_padding = count


def _set_cloud_account(admin, there):
    admin.cloud_account = there
    admin.settings_changed()


def _set_link(admin, wish):
    try:
        admin.radio.set(wish.get("role", "tx"), wish.get("peer_mac"), wish.get("key"), False)
    except (TypeError, ValueError) as error:
        raise ControlError(f"espnow takes role, peer_mac and key. {error}") from None


def _setter(name, owner=None):
    def action(admin, value):
        setattr(getattr(admin, owner) if owner else admin, name, value)
    return action


ADMIN_KEYS = {   # key -> its type, what it does
    "password": (str, lambda admin, value: admin.set_password(value)),
    "must_change_password": (bool, _setter("must_change")),
    "unlock": (bool, lambda admin, _: admin.unlock()),
    "joined": (str, lambda admin, value: admin.wifi.put_on(value)),
    "networks": (list, _set_networks),
    "radio": (bool, _setter("available", "radio")),
    "espnow": (dict, _set_link),
    "radio_error": (str, _setter("broken", "radio")),
    "controllers": (list, _setter("controllers", "settings")),
    "cloud_account": (bool, _set_cloud_account),
    "checks": (dict, _set_checks),
    "firmware": (dict, lambda admin, wish: _set_upgrade(admin.firmware, wish)),
    "chip": (dict, lambda admin, wish: _set_upgrade(admin.chip, wish) if wish else
             setattr(admin, "chip", None)),
    "log_bytes": (int, _set_logs),
    "restart": (bool, lambda admin, _: admin.restart("power_on", 0)),
}

ROUTES = {
    ("POST", "/admin"): HardwareControl.admin,
    ("POST", "/pace"): HardwareControl.pace,
    ("POST", "/usb/replug"): HardwareControl.replug,
    ("POST", "/usb/tunnel"): HardwareControl.tell,
    ("POST", "/usb/frame"): HardwareControl.frame,
    ("POST", "/usb/pipe"): HardwareControl.pipe,
    ("POST", "/usb/stream"): HardwareControl.stream,
    ("GET", "/cloud"): HardwareControl.cloud,
    ("POST", "/cloud"): HardwareControl.steer_cloud,
}
