# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's settings object and the scoreboards that it can read."""

CONTROLLERS = [
    {"manufacturer": manufacturer, "model": model, "sport": sport, "input_type": input_type}
    for manufacturer, models, inputs, sports in (
        ("daktronics", ("5000",), ("cl", "rs232", "wireless"), ("basketball", "volleyball")),
        ("electromech", ("LX",), ("cl",), ("football",)),
        ("nevco", ("MPC7-W", "MPC-5"), ("nevco",), ("basketball", "hockey")),
        ("oes", ("ISC9000",), ("rs485", "wireless"), ("hockey", "basketball")))
    for model in models for sport in sports for input_type in inputs]

CHOICE = ("manufacturer", "model", "sport", "input_type")

DEFAULTS = {
    "http_endpoint_enabled": True, "mqtt_config_enabled": True, "tcp_feed_enabled": True,
    "test_cloud_data_enabled": False, "wireless_output_enabled": False,
    "wireless_output_network_id": 1, "wireless_output_channel": 1,
    "ethernet_bridge_output_enabled": False, "ethernet_bridge_peer_host": "",
    "ethernet_bridge_port": 1011, "usb_tunnel_enabled": False, "usb_tunnel_port": 18883,
}
RM024 = {"wireless_auto_scan": True, "wireless_group": 0, "wireless_channel": 0}
XBEE = {"xbee_channel": 255, "xbee_pan_id": 65535}
XBEE_MAKERS = ("oes", "varsity")
RANGES = {"wireless_output_network_id": (1, 20), "wireless_output_channel": (1, 10),
          "ethernet_bridge_port": (1, 65535), "usb_tunnel_port": (1, 65535),
          "wireless_group": (0, 255), "wireless_channel": (0, 79)}
XBEE_CHANNELS = (0x0B, 0x1A)


class Settings:
    def __init__(self, on_usb):
        self._on_usb = on_usb
        self.reset()

    def reset(self):
        self.values = DEFAULTS | RM024 | XBEE | {"usb_tunnel_enabled": self._on_usb}
        self.choice = dict(CONTROLLERS[1])
        self.controllers = list(CONTROLLERS)

    def is_on(self, key):
        return bool(self.values.get(key))

    def put(self, values):
        """These values from now on, whether a host could set them or not; None takes a key away."""
        self.values = {key: value for key, value in (self.values | values).items()
                       if value is not None}

    @staticmethod
    def kinds(params):
        """The keys that setSettings takes along with these values, and their types."""
        expected = DEFAULTS | dict.fromkeys(CHOICE, "")
        if params.get("input_type") == "wireless":
            maker = params.get("manufacturer")
            xbee = isinstance(maker, str) and maker.lower() in XBEE_MAKERS
            expected = expected | (XBEE if xbee else RM024)
        return {key: type(value) for key, value in expected.items()}

    def set_choice(self, choice):
        """Raises ValueError with a sentence if there is no such scoreboard."""
        if choice not in self.controllers:
            raise ValueError("This device cannot read that scoreboard.")
        self.choice = choice

    def choose(self, config):
        """Takes a scoreboard from the account, which asks nobody whether there is such a one."""
        self.choice = self.choice | {key: config[key] for key in CHOICE
                                     if isinstance(config.get(key), str)}

    def set(self, params):
        for key, (low, high) in RANGES.items():
            if key in params and not low <= params[key] <= high:
                raise ValueError(f"The value of {key} must be from {low} to {high}.")
        channel = params.get("xbee_channel", 255)
        if channel != 255 and not XBEE_CHANNELS[0] <= channel <= XBEE_CHANNELS[1]:
            raise ValueError("The value of xbee_channel must be from 0B to 1A.")
        if not 0 <= params.get("xbee_pan_id", 0) <= 0xFFFF:
            raise ValueError("The value of xbee_pan_id must have 16 bits.")
        self.set_choice({key: params[key] for key in CHOICE})
        unchanged = {key for key, value in XBEE.items() if params.get(key) == value}
        self.values.update((key, value) for key, value in params.items()
                           if key not in CHOICE and key not in unchanged)
