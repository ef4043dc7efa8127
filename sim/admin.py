# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's administration: its methods and its memory, the same over every carrier."""

import secrets

from device_log import DeviceLog
from power import Power
from radio import Radio
from settings import CHOICE, Settings
from signin import FACTORY_PASSWORD, Password, Refused
from updating import Updating
from upgrades import NetworkTest
from wifi import NETWORKS, Wifi

DURATIONS = {"scanWifi": 4, "otaCheck": 1.5, "configureWifi": 0.3}


class Admin:
    def __init__(self, venue, device, clock, fingerprint="", on_usb=False):
        self._venue = venue
        self.device = device
        self.clock = clock
        self.device_id = device.id
        self.password = Password(venue.secret, clock, device.admin_password)
        self.token_made = not self.password.must_change
        self.fingerprint = fingerprint
        self.cloud_account = True  # it has its sign-in for the cloud
        self.broker = {}           # as it was set; nothing here reads it
        self.cloud_route = lambda: ""
        self.power = Power(clock, self._come_up)
        self.on_settings = []      # called when the cloud connection's settings may have changed
        self.on_token = []         # called when another token holds
        self.logins = 0
        self.requests = {}         # method -> how often
        self.wifi = Wifi(clock, device.address, NETWORKS)
        self.wifi.joined = None if self.password.must_change else NETWORKS[0].ssid
        for network in NETWORKS:
            if network.password:
                venue.secret(network.password)
        self.radio = Radio(venue.secret)
        self.settings = Settings(on_usb)
        self.network_test = NetworkTest(clock)
        self.updating = Updating(clock, self.wifi, self.power, device.firmware)
        self._erase = False
        self.log = DeviceLog()
        self.note("started")

    def note(self, text):
        self.log.note(self.power.uptime, text)

    def handle(self, method, params, session):
        """The method's result; raises Refused. A breach of the format is recorded as well."""
        known = METHODS.get(method)
        if not known:
            raise self._broken(session, "a method", "there is no such method", "unknown_method")
        action, required, optional = known
        self.requests[method] = self.requests.get(method, 0) + 1
        if not session.signed_in and method != "login":
            raise Refused("unauthorized", "Sign in first.")
        if self.password.must_change and method not in WITH_OLD_PASSWORD:
            raise Refused("password_change_required", "Choose a new password first.")
        if callable(required):
            required = required(params)
        rule = _broken_rule(params, required, optional)
        if rule:
            raise self._broken(session, method, rule)
        self.note(f"{session.carrier}: {method}")
        return action(self, params, session)

    def _broken(self, session, method, rule, code="bad_request"):
        self._venue.violation(f"{session.carrier} {self.device.id} {method}: {rule}")
        return Refused(code, f"Bad request: {rule}.")

    # Signing in

    def login(self, params, session):
        self.password.check_lock()
        session.signed_in = False
        self.password.check(params["password"])
        self.logins += 1
        session.signed_in = True
        return {"must_change_password": self.password.must_change}

    def change_password(self, params, session):
        if params["new_password"] != params["confirm_password"]:
            raise self._broken(session, "changePassword", "the new password's repeat differs")
        self.password.change(params["current_password"], params["new_password"])
        return {}

    def reset_password(self, params, _):
        self._confirm(params)
        self.password.set(FACTORY_PASSWORD)
        return {}

    @staticmethod
    def _confirm(params):
        if not params["confirm"]:
            raise Refused("not_confirmed", "This needs a confirmation.")

    def ensure_token(self, params, _):
        if params.get("force_new"):
            self._renew_token()
        self.token_made = True
        return {"token": self.device.token}

    def _renew_token(self):
        self.device.token = self._venue.secret(secrets.token_urlsafe(24))
        for hook in self.on_token:
            hook()

    def passkey(self, _, session):
        if session.carrier == "ble":
            raise Refused("not_available_here",
                          "The passkey is only shown over a cable or the network.")
        return {"passkey": self.device.passkey}

    # Its account of itself

    def status(self, *_):
        route = "wifi" if self.wifi.ip else self.cloud_route()
        return {"device_id": self.device_id, "firmware_version": self.updating.firmware.version,
                **self.wifi.status(), "eth_ip": "", "mqtt_transport": route,
                "mqtt_connected": self.cloud_account and bool(route),
                "tcp_clients": self.device.feed_clients, "reset_reason": self.power.reason,
                "uptime_s": int(self.power.uptime),
                "tls_fingerprint": self.fingerprint,
                "must_change_password": self.password.must_change,
                "api_token_configured": self.token_made, "espnow": self.radio.shown()}

    def serves_feed(self):
        return not self.power.down and self.settings.is_on("tcp_feed_enabled")

    def state(self, *_):
        return self.device.envelope()

    def logs(self, *_):
        return {"logs": self.log.text()}

    def get_id(self, *_):
        return {"device_id": self.device_id}

    def set_id(self, params, _):
        if not params["device_id"].strip():
            raise Refused("bad_request", "The device id must not be empty.")
        self.device_id = params["device_id"]
        return {}

    def clear_cloud(self, *_):
        self.cloud_account, self.broker = False, {}
        self.settings_changed()
        return {}

    def set_broker(self, params, _):
        self.broker = params
        return {}

    # Networks

    def configure_wifi(self, params, _):
        if self.wifi.off:
            raise Refused("wifi_off", "Wi-Fi is off while the wireless link is in use.")
        self.wifi.configure(params["ssid"], params["pass"])
        return {}

    def set_radio(self, params, session):
        if not self.radio.available:
            raise Refused("not_supported", "This device has no wireless link.")
        role, key, generate = params["role"], params.get("key"), params.get("generate_key")
        if role not in ("tx", "off"):
            raise self._broken(session, "setEspNow", "the role is neither tx nor off")
        if generate is False or (generate and key is not None) or \
                (role == "off" and len(params) > 1):
            raise self._broken(session, "setEspNow", "keys that do not go together")
        return self._as_told(self.radio.set, role, params.get("peer_mac"), key, generate)

    @staticmethod
    def _as_told(action, *values):
        """An action whose objections are sentences for the user."""
        try:
            return action(*values) or {}
        except ValueError as error:
            raise Refused("invalid_value", str(error)) from None

    # Settings

    def set_controller(self, params, _):
        return self._as_told(self.settings.set_choice, params)

    def set_settings(self, params, session):
        if not params["mqtt_config_enabled"]:
            raise self._broken(session, "setSettings", "mqtt_config_enabled is not true")
        if params.get("wireless_auto_scan") and params["wireless_channel"]:
            raise self._broken(session, "setSettings", "a channel beside the automatic search")
        self._as_told(self.settings.set, params)
        self.settings_changed()
        return {}

    def settings_changed(self):
        for hook in self.on_settings:
            hook()

    # Restarts and updates

    def apply_chip(self, params, session):
        if params["source"] != "partition":
            raise self._broken(session, "c6OtaApply", "the source is not partition")
        return self.updating.apply_chip()

    def reboot(self, *_):
        self.power.restart("software")
        return {"status": "ok"}

    def factory_reset(self, params, _):
        self._confirm(params)
        self._erase = True
        self.power.restart("factory_reset")
        return {"status": "ok"}

    def _come_up(self):
        if self._erase:
            self._erase = False
            self._erase_all()
        self.radio.restart()
        self.wifi.restart(self.radio.role == "tx")
        self.updating.finish_restart()
        self.device.firmware = self.updating.firmware.version
        self.log.clear()
        self.note(f"started after {self.power.reason}")

    def _erase_all(self):
        self.password.set(FACTORY_PASSWORD)
        self.token_made = self.cloud_account = False
        self.broker = {}
        self._renew_token()
        self.device_id = self.device.id
        self.password.unlock()
        self.wifi.forget()
        self.radio.reset()
        self.settings.reset()


def _broken_rule(params, required, optional):
    keys = set(params)
    if not set(required) <= keys or not keys <= set(required) | set(optional):
        return "the keys of its params are not those of this method"
    for key, kind in {**required, **optional}.items():
        if key in params and type(params[key]) is not kind:
            return f"{key} is of the wrong JSON type"
    return None


def _any_keys(params):
    """For contents that mean nothing here."""
    return {key: type(value) for key, value in params.items()}


WITH_OLD_PASSWORD = ("login", "getStatus", "changePassword")
METHODS = {   # method -> action, the keys of its params with their types, further possible ones
    "login": (Admin.login, {"password": str}, {}),
    "getStatus": (Admin.status, {}, {}),
    "getState": (Admin.state, {}, {}),
    "changePassword": (Admin.change_password, {
        "current_password": str, "new_password": str, "confirm_password": str}, {}),
    "scanWifi": (lambda admin, *_: {"networks": admin.wifi.scan()}, {}, {}),
    "configureWifi": (Admin.configure_wifi, {"ssid": str, "pass": str}, {}),
    "getEspNow": (lambda admin, *_: {"espnow": admin.radio.shown()}, {}, {}),
    "setEspNow": (Admin.set_radio, {"role": str},
                  {"peer_mac": str, "key": str, "generate_key": bool}),
    "getControllerList": (lambda admin, *_: {"controllers": admin.settings.controllers}, {}, {}),
    "getControllerConfig": (lambda admin, *_: admin.settings.choice, {}, {}),
    "setControllerConfig": (Admin.set_controller, dict.fromkeys(CHOICE, str), {}),
    "ensureApiToken": (Admin.ensure_token, {}, {"force_new": bool}),
    "reboot": (Admin.reboot, {}, {}),
    "networkTest": (lambda admin, *_: admin.network_test.ask(), {}, {}),
    "getSettings": (lambda admin, *_: admin.settings.values, {}, {}),
    "setSettings": (Admin.set_settings, Settings.kinds, {}),
    "otaCheck": (lambda admin, *_: admin.updating.check(), {}, {}),
    "otaApply": (lambda admin, *_: admin.updating.apply(), {}, {}),
    "otaProgress": (lambda admin, *_: admin.updating.progress(), {}, {}),
    "c6OtaStatus": (lambda admin, *_: admin.updating.chip_status(), {}, {}),
    "c6OtaApply": (Admin.apply_chip, {"source": str, "force": bool}, {}),
    "blePasskey": (Admin.passkey, {}, {}),
    "getDeviceId": (Admin.get_id, {}, {}),
    "setDeviceId": (Admin.set_id, {"device_id": str}, {}),
    "getMqttConfig": (lambda admin, *_: admin.broker, {}, {}),
    "setMqttConfig": (Admin.set_broker, _any_keys, {}),
    "provision": (lambda *_: {}, _any_keys, {}),
    "clearMqttConfig": (Admin.clear_cloud, {}, {}),
    "getLogs": (Admin.logs, {}, {}),
    "resetLocalPassword": (Admin.reset_password, {"confirm": bool}, {}),
    "factoryReset": (Admin.factory_reset, {"confirm": bool}, {}),
}
