# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device, or a wireless receiver paired with one, on a serial port."""

import asyncio
import json
import time

import usb_wire as wire
from download import STREAM
from net import ListenError, log
from receiver_talk import ReceiverTalk
from rpc import RpcServer, compact, is_compact
from tunnel import Tunnel
from usb_port import Port

REPEAT_SECONDS = 1.0       # the device repeats its state, because a host may have come since
REPORT_SECONDS = 5         # the receiver repeats its status
HELLO = {"t": "hello", "streams": 1}

# The host paces its tunnel to a frame in 40 ms. Frames that come faster than that on average use up
# this allowance, which covers a computer that was busy for a second.
FRAME_SECONDS = 0.036
FRAMES_AHEAD = 25

# No frame, a length that cannot be, and a CRC that is wrong.
NOISE = b"~~\x00T\x00TF\x01\xff\xff\x00TF\x01\x04\x00junk\x00\x00"


class UsbFace:
    def __init__(self, venue, faults, admin, path, cloud, receiver=None):
        self._venue = venue
        self._faults = faults
        self._admin = admin
        self._device = admin.device
        self._cloud = cloud
        self.receiver = receiver and ReceiverTalk(self, faults, admin, receiver)
        self.kind = "receiver" if receiver else "device"
        self.name = "receiver" if receiver else "usb"
        self.port = Port(path, self._bytes, self._reset)
        self.tunnel = Tunnel(self.port, self.violation,
                             lambda: faults.usb.kind(self._device.id, "credit"))
        self.rpc = RpcServer(venue, faults, admin, self.name, self._send_admin)
        self.hellos = self.pings = self.envelopes = 0
        self.told_tunnel = None    # in place of the device's own, if a test wants that
        self._replug = None
        self._one_text = asyncio.Lock()
        self._reset()
        admin.power.hooks.append(self._restart)
        admin.on_settings.append(self.tell_tunnel)
        admin.updating.tunnels.append(self.download_tunnel)
        if not receiver:
            admin.cloud_route = self._route

    def _reset(self):
        """A connection has ended: nothing of it is left for the next one."""
        self._deframer = wire.Deframer()
        self._texts = wire.Texts()
        self._greeted = self.answered = False
        self._last_tunnel = None
        self._allowance, self._last_frame = FRAMES_AHEAD, 0.0
        self.rpc.reset()
        self.tunnel.reset()

    def violation(self, rule):
        self._venue.violation(f"{self.name} {self._device.id}: {rule}")

    def shown(self):
        return {"path": self.port.path, "plugged": self.port.plugged, "open": self.port.heard,
                "opens": self.port.opens, "hellos": self.hellos, "answered": self.answered,
                "pings": self.pings, "signed_in": self.rpc.session.signed_in,
                "logins": self.rpc.logins, "requests": self.rpc.requests,
                "envelopes": self.envelopes, "dropped": self.port.dropped,
                "rx_requests": self.receiver.requests if self.receiver else 0,
                **self.tunnel.shown()}

    # The cable

    def open(self):
        self.port.plug()

    def close(self):
        self._reset()
        self.port.unplug()

    def apply_faults(self):
        line = self._faults.usb.kind(self._device.id, "line")
        if line == "unplug":
            self.close()
        elif not self._replug and (self.receiver or not self._admin.power.down):
            try:
                self.port.plug()
            except ListenError as error:
                log(str(error))
        self.port.set_deaf(line == "deaf")

    def replug(self, seconds):
        """Pulls the cable, or lets the receiver restart, and puts it back after a while."""
        self.close()
        if self._replug:
            self._replug.cancel()
        self._replug = asyncio.get_running_loop().call_later(seconds, self._plug_again)

    def _plug_again(self):
        self._replug = None
        self.apply_faults()

    def _restart(self, down):
        if self.receiver:
            self.rpc.reset()
            self.tunnel.reset()
            self._last_tunnel = None
            self.receiver.report()
            self.tell_tunnel()
        elif down:
            self.close()
        else:
            self.apply_faults()

    # Frames from the host

    def _bytes(self, data):
        frames = self._deframer.feed(data)
        if self._deframer.stray:
            self._deframer.stray = 0
            self.violation("bytes that belong to no frame")
        for kind, payload in frames:
            self._frame(kind, payload)

    def _frame(self, kind, payload):
        if kind == wire.CTRL:
            self._ctrl(payload)
            return
        if not self._greeted:
            self.violation("a frame came before the hello")
        if kind in (wire.PIPE, wire.STREAM):
            self._check_pace()
        elif kind != wire.ADMIN:
            self.violation("a frame of a type that a host never sends")
            return
        if not self.reaches_device:
            return
        if kind == wire.ADMIN:
            self._admin_payload(payload)
        elif kind == wire.PIPE:
            self.tunnel.pipe_from_host(payload)
        else:
            self.tunnel.stream_from_host(payload)

    @property
    def reaches_device(self):
        return self.receiver.radio.linked if self.receiver else not self._admin.power.down

    def _check_pace(self):
        now = time.monotonic()
        self._allowance = min(FRAMES_AHEAD, self._allowance
                              + (now - self._last_frame) / FRAME_SECONDS) - 1
        self._last_frame = now
        if self._allowance < 0:
            self._allowance = FRAMES_AHEAD
            self.violation("tunnel frames come faster than one in 40 ms")

    def _admin_payload(self, payload):
        try:
            text = self._texts.feed(payload)
        except wire.WireError as error:
            self.violation(str(error))
            return
        if text is not None:
            self.rpc.take(text)

    def _ctrl(self, payload):
        try:
            message = json.loads(payload)
        except (ValueError, RecursionError):
            message = None
        if not isinstance(message, dict) or not is_compact(payload):
            self.violation("a ctrl frame is not a compact JSON object")
            return
        kind = message.get("t")
        if kind == "hello":
            self._hello(message)
        elif not self._greeted:
            self.violation("a ctrl message came before the hello")
        elif message == {"t": "ping"}:
            self.pings += 1
        elif self.receiver and kind == "rx_set":
            self.receiver.set(message)
        else:
            self.violation("a ctrl message that no host sends to this")

    # Greeting

    def _hello(self, message):
        self.hellos += 1
        self._greeted = True
        if message != HELLO:
            self.violation("the hello is not {\"t\":\"hello\",\"streams\":1}")
        fault = self._faults.usb.take(self._device.id, "hello")
        if fault and fault.kind == "hello-late":
            asyncio.get_running_loop().call_later(fault.seconds, self._answer_hello, self._texts)
        elif not fault:
            self._answer_hello(self._texts)

    def _answer_hello(self, connection):
        if connection is not self._texts:
            return    # that connection has ended
        log(f"{self.name} {self._device.id}: a host is connected")
        self.answered = True
        order = self._faults.usb.kind(self._device.id, "order")
        messages = [self._own_hello()] if self.reaches_device else []
        if self.receiver or order:
            status = self.receiver.radio.status() if self.receiver else {
                "t": "rx_status", "configured": False, "link": False}
            messages.insert(len(messages) if order == "hello-first" else 0, status)
        for message in messages:
            self.send_ctrl(message)
        self._last_tunnel = self._tunnel()
        self.publish()

    def _tunnel(self):
        """The device's word on its cloud connection, or None."""
        wanted = self._admin.cloud_account and self._admin.settings.is_on("usb_tunnel_enabled")
        return self.told_tunnel or (self._cloud.tunnel() if wanted else None)

    def _own_hello(self):
        tunnel = self._tunnel()
        return {"t": "hello", "device_id": self._admin.device_id,
                "fw": self._admin.updating.firmware.version} | ({"tunnel": tunnel} if tunnel else {})

    def tell_tunnel(self, again=False):
        """A further hello, which tells a host that is there already about another tunnel."""
        if self.answered and self.reaches_device and \
                (again or self._tunnel() != self._last_tunnel):
            self._last_tunnel = self._tunnel()
            self.tunnel.reset()    # a host ends all streams at each hello
            self.send_ctrl(self._own_hello())

    def download_tunnel(self):
        """The tunnel, if firmware can come through it by what the host knows; else None."""
        told = self.answered and self.reaches_device and self._tunnel()
        streams = told and told.get("streams")
        return self.tunnel if isinstance(streams, dict) and STREAM in streams else None

    def _route(self):
        return "usb" if self.answered and self._tunnel() else ""

    # Sending

    def _send(self, kind, payload, on_write=None, broken=False):
        try:
            data = wire.frame(kind, payload)
        except ValueError:
            log(f"{self.name} {self._device.id}: a message that fits no frame was dropped")
            return False
        if broken:
            data = data[:-1] + bytes([data[-1] ^ 0x40])
        if self._faults.usb.kind(self._device.id, "line") == "noise":
            data = NOISE + data
        return self.port.send(data, on_write)

    def send_ctrl(self, message):
        self._send(wire.CTRL, compact(message))

    async def _send_admin(self, text, fault):
        kind = fault and fault.kind
        pieces = {}
        if kind in ("fragments", "gap"):
            piece = fault.bytes if kind == "fragments" else max(1, len(text) // 4)
            piece = min(max(piece, len(text) // 256 + 1), wire.FRAGMENT_DATA)
            pieces = {"piece": piece, "whole": False}
        payloads = wire.admin_payloads(text, **pieces)
        if kind == "gap":
            del payloads[1]
        async with self._one_text:   # fragments of two texts must not mix
            for payload in payloads:
                await self.port.room()
                self._send(wire.ADMIN, payload, broken=kind == "bad-crc")

    def publish(self):
        """Sends the present state; returns when its write began, or None if it did not yet."""
        if not self.answered or not self.reaches_device:
            return None
        moments = []
        revision = self._device.revision

        def note():
            moments.append(time.monotonic_ns())
            self._device.usb_sent.add(revision, moments[0])
        self.envelopes += self._send(wire.ENVELOPE, compact(self._device.envelope()), note)
        return moments[0] if moments else None

    async def repeat(self):
        """Tells the state, and a receiver its status, again and again."""
        reported = 0.0
        while True:
            await asyncio.sleep(REPEAT_SECONDS)
            self.publish()
            if self._admin.clock.now() - reported >= REPORT_SECONDS:
                reported = self._admin.clock.now()
                if self.receiver:
                    self.receiver.report()
