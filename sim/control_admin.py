# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The control request about a device's administration."""

from upgrades import CHECKS
from wifi import JOINS, Network
from wishes import ControlError, take, within

UPGRADE_KEYS = {"version": (str,), "offered": (str, type(None)), "error": (str, type(None)),
                "check_error": (str,), "bytes": (int,), "fails_in": (str,), "total": (bool,),
                "waits": (bool,), "stages": (list,)}
LOG_LIMIT = 1 << 20


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


def _is_stage(stage):
    return isinstance(stage, list) and len(stage) == 2 and isinstance(stage[0], str) \
        and type(stage[1]) in (int, float) and 0 <= stage[1] <= 1e6


def _set_upgrade(upgrade, wish):
    for key, value in wish.items():
        if key not in UPGRADE_KEYS or type(value) not in UPGRADE_KEYS[key]:
            raise ControlError(f"An update takes {', '.join(UPGRADE_KEYS)}.")
    if not wish.get("stages", True) or not all(map(_is_stage, wish.get("stages", ()))):
        raise ControlError("stages is a list of one or more pairs of a name and seconds.")
    names = [stage[0] for stage in wish.get("stages", upgrade.stages)]
    if wish.get("fails_in", "") not in ("", *names):
        raise ControlError(f"fails_in is one of its stages: {', '.join(names)}.")
    if upgrade.running and "stages" in wish:
        raise ControlError("An update is running.", 409)
    within(wish.get("bytes"), 0, 1 << 28, "bytes")
    for key, value in wish.items():
        setattr(upgrade, "size" if key == "bytes" else key, value)


def _set_chip(admin, wish):
    updating = admin.updating
    if not wish:
        updating.chip = None
        return
    if not updating.chip:
        updating.add_chip()
    _set_upgrade(updating.chip, wish)


def _set_settings(admin, wish):
    admin.settings.put(wish)
    admin.settings_changed()


def _set_checks(admin, failing):
    if not set(failing) <= set(CHECKS) or not all(isinstance(v, str) for v in failing.values()):
        raise ControlError(f"checks tells why which of {', '.join(CHECKS)} fail.")
    admin.network_test.failing = failing


def _set_logs(admin, count):
    within(count, 0, LOG_LIMIT, "log_bytes")
    admin.log.wished_bytes = count


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
    "password": (str, lambda admin, value: admin.password.set(value)),
    "must_change_password": (bool, _setter("must_change", "password")),
    "unlock": (bool, lambda admin, _: admin.password.unlock()),
    "joined": (str, lambda admin, value: admin.wifi.put_on(value)),
    "networks": (list, _set_networks),
    "radio": (bool, _setter("available", "radio")),
    "espnow": (dict, _set_link),
    "radio_error": (str, _setter("broken", "radio")),
    "settings": (dict, _set_settings),
    "controllers": (list, _setter("controllers", "settings")),
    "controller": (dict, _setter("choice", "settings")),
    "cloud_account": (bool, _set_cloud_account),
    "checks": (dict, _set_checks),
    "test_hangs": (bool, _setter("hangs", "network_test")),
    "firmware": (dict, lambda admin, wish: _set_upgrade(admin.updating.firmware, wish)),
    "chip": (dict, _set_chip),
    "log_bytes": (int, _set_logs),
    "restart": (bool, lambda admin, _: admin.power.restart("power_on", 0)),
}


def steer(admin, wishes):
    """Changes what the keys name."""
    values = dict(zip(ADMIN_KEYS, take(wishes, **{k: kind for k, (kind, _) in ADMIN_KEYS.items()})))
    for key, value in values.items():
        if key in wishes:
            ADMIN_KEYS[key][1](admin, value)
