# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The control requests about the devices as things: their administration, ports and tunnels."""

from control_admin import steer
from net import log
from radio import KEY, REPORT_KEYS
from tunnel import TunnelError, WINDOW
from usb_wire import PAYLOAD_LIMIT, TUNNEL_LIMIT, frame
from wishes import ControlError, body_of, take, within

COUNT_LIMIT = 1 << 28


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
        return self._hardware.admins[device.id].password.value

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
        faces = {name: self._hardware.faces.get((device.id, name)) for name in ("usb", "receiver")}
        return {
            "admin": {"device_id": admin.device_id,
                      "must_change_password": admin.password.must_change,
                      "logins": admin.logins, "requests": admin.requests,
                      "wifi": admin.wifi.status(), "radio": admin.radio.shown(),
                      "controller": admin.settings.choice, "settings": admin.settings.values,
                      "cloud_account": admin.cloud_account, "token_made": admin.token_made,
                      "restarts": admin.power.restarts, "down": admin.power.down,
                      **admin.updating.shown()},
            **{name: face and face.shown() for name, face in
               {**faces, "ble": self._hardware.radios.get(device.id)}.items()}}

    # Administration

    def admin(self, request):
        body = body_of(request)
        admin = self._hardware.admins[self._find_device(body.pop("device", None)).id]
        steer(admin, body)
        return self.shown(admin.device)["admin"]

    def pace(self, request):
        pace, = take(body_of(request), pace=float)
        if pace is None or not 0 < pace <= 10000:
            raise ControlError("pace must be a number above 0 and up to 10000.")
        self._hardware.clock.set_pace(pace)
        return {"pace": pace}

    # Ports and tunnels

    def receiver(self, request):
        device_id, key, hidden, restarts = take(body_of(request), device=str, key=str, hide=list,
                                                restarts=bool)
        talk = self._face(device_id, True).receiver
        if key and not KEY.fullmatch(key):
            raise ControlError("key has 32 hexadecimal digits, or none at all.")
        if not all(name in REPORT_KEYS for name in hidden or ()):
            raise ControlError(f"hide names some of {', '.join(REPORT_KEYS)}.")
        if key is not None:
            talk.radio.take_key(key)
        talk.radio.hidden = talk.radio.hidden if hidden is None else hidden
        talk.restarts = talk.restarts if restarts is None else restarts
        talk.report()
        return talk.radio.status()

    def ble(self, request):
        device_id, lose, near, powered, pairing = take(
            body_of(request), device=str, lose=bool, near=bool, powered=bool, pairing=bool)
        radio = next(iter(self._hardware.radios.values()), None) if device_id is None \
            else self._hardware.radios.get(self._find_device(device_id).id)
        if not radio:
            raise ControlError("That device has no Bluetooth. It comes from --ble.", 404)
        if near is not None:
            radio.set_near(near)
        if powered is not None:
            self._hardware.bluez.set_powered(powered)
        if pairing is not None:
            self._hardware.bluez.set_pairing(pairing)
        if lose:
            radio.lose()
        return radio.shown()

    def replug(self, request):
        device_id, receiver, seconds = take(body_of(request), device=str, receiver=bool,
                                            seconds=float)
        within(seconds, 0, 3600, "seconds")
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
        within(255 if kind is None else kind, 0, 255, "type")
        within(len(payload), 0, PAYLOAD_LIMIT, "the payload's length")
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
        within(count, 1, COUNT_LIMIT, "send")
        within(piece, 1, limit, "piece")
        within(rate, 1, COUNT_LIMIT, "rate")

    def stream(self, request):
        device_id, receiver, name, window, number, send, piece, seed, rate, credit, close = take(
            body_of(request), device=str, receiver=bool, open=str, window=int, id=int, send=int,
            piece=int, seed=int, rate=int, credit=int, close=bool)
        tunnel = self._face(device_id, receiver).tunnel
        action = _one_of({"open": name, "send": send, "credit": credit, "close": close})
        within(window, 0, 1 << 24, "window")
        within(credit, 0, 0xFFFFFFFF, "credit")
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
        within(count, 1, COUNT_LIMIT, "source_bytes")
        within(send, 1, COUNT_LIMIT, "send")
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


ROUTES = {
    ("POST", "/admin"): HardwareControl.admin,
    ("POST", "/pace"): HardwareControl.pace,
    ("POST", "/ble"): HardwareControl.ble,
    ("POST", "/usb/receiver"): HardwareControl.receiver,
    ("POST", "/usb/replug"): HardwareControl.replug,
    ("POST", "/usb/tunnel"): HardwareControl.tell,
    ("POST", "/usb/frame"): HardwareControl.frame,
    ("POST", "/usb/pipe"): HardwareControl.pipe,
    ("POST", "/usb/stream"): HardwareControl.stream,
    ("GET", "/cloud"): HardwareControl.cloud,
    ("POST", "/cloud"): HardwareControl.steer_cloud,
}
