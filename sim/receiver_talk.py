# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A wireless receiver's own business at its port: its reports, and the wishes of the host."""

RX_SET = {"t": str, "generate_key": bool, "key": str, "channel": int}
RESTART_SECONDS = 3


class ReceiverTalk:
    def __init__(self, face, faults, admin, radio):
        self._face = face          # the port
        self._faults = faults
        self._admin = admin
        self.radio = radio         # the receiver itself
        self.requests = 0
        self.restarts = True       # after it has taken a wish, which takes its port away

    def report(self):
        if self._face.answered:
            self._face.send_ctrl(self.radio.status())

    def set(self, message):
        self.requests += 1
        extra = set(message) - {"t"}
        if not extra or any(type(message[key]) is not RX_SET.get(key) for key in message) or \
                {"generate_key", "key"} <= extra or message.get("generate_key") is False or \
                message.get("channel", 1) < 1:
            self._face.violation("the members of rx_set do not go together")
            return
        if message.get("key", "") != message.get("key", "").strip():
            self._face.violation("rx_set's key has blanks around it")
        fault = self._faults.usb.take(self._admin.device.id, "rx")
        kind = fault and fault.kind
        if kind in ("rx-refuse", "rx-error"):
            told = {"error": fault.message} if fault.message is not None else {}
            self._face.send_ctrl({"t": "rx_error", **told} if kind == "rx-error"
                                 else {"t": "rx_set", "ok": False, **told})
        elif kind != "rx-silent":
            self._apply(message, "rx_reboot" if kind == "rx-as-reboot" else "rx_set")

    def _apply(self, message, answer):
        try:
            key = self.radio.set(message.get("key"), message.get("generate_key"),
                                 message.get("channel"))
        except ValueError as error:
            self._face.send_ctrl({"t": "rx_set", "ok": False, "error": str(error)})
            return
        self._face.send_ctrl({"t": answer, "ok": True, **({"key": key} if key else {})})
        clock = self._admin.clock
        if self.restarts:
            clock.later(0.5, lambda: self._face.replug(RESTART_SECONDS / clock.pace))
        else:
            self.report()
