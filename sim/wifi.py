# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A device's Wi-Fi: the networks it hears, and how joining one of them goes."""

from dataclasses import dataclass

FIRST_RSSI = -52
SAVING_SECONDS = 1
CONNECTING_SECONDS = 4     # until a network has said yes or no
SEARCHING_SECONDS = 10     # until one that isn't there is given up
SLOW_SECONDS = 24
CHECKING_SECONDS = 2       # until the new connection counts as good
REVERTING_SECONDS = 2      # until the old one is back


@dataclass
class Network:
    ssid: str
    password: str = ""
    rssi: int = FIRST_RSSI
    auth: object = "wpa2"
    joins: str = "ok"      # or "reject", "slow", "never"


JOINS = ("ok", "reject", "slow", "never")
NETWORKS = (
    Network("Venue", "courtside-7"),
    Network("Locker room", "", -67, "open"),
    Network("Venue", "courtside-7", -80),   # a second access point, further away
    Network("Press", "row-12-seat-4", -71, 3, "reject"),
    Network("Attic", "dust-and-cables", -84, "wpa3", "slow"),
    Network("Basement", "below-the-stands", -88, "wpa2", "never"),
)


class Wifi:
    def __init__(self, clock, address, networks):
        self._clock = clock
        self._address = address    # the device's own, once it is on a network
        self.networks = list(networks)
        self.joined = None         # the name of the network it is on
        self.off = False           # the radio is in use for the wireless link
        self._trial = None         # the attempt to join: its stages, outcome, detail, start

    @property
    def ip(self):
        self._settle()
        return self._address if self.joined and not self.off else ""

    def scan(self):
        if self.off:
            return []
        return [{"ssid": n.ssid, "rssi": n.rssi, "auth": n.auth} for n in self.networks]

    def configure(self, ssid, password):
        network = next((n for n in self.networks if n.ssid == ssid), None)
        detail = ""
        if network is None:
            stages, detail = [("connecting", SEARCHING_SECONDS)], "network not found"
        elif network.joins == "never":
            stages = [("connecting", float("inf"))]
        else:
            stages = [("connecting",
                       SLOW_SECONDS if network.joins == "slow" else CONNECTING_SECONDS)]
            if network.joins == "reject":
                detail = "the access point refused the device"
            elif network.password != password:
                detail = "authentication failed"
        stages.append(("reverting", REVERTING_SECONDS) if detail
                      else ("verifying", CHECKING_SECONDS))
        self._trial = {"ssid": ssid, "detail": detail, "since": self._clock.now(),
                       "stages": [("saving", SAVING_SECONDS), *stages], "settled": False}

    def provision(self):
        """How far joining has got, as the device's status tells it."""
        self._settle()
        trial = self._trial
        if not trial:
            return {"state": "idle", "detail": "", "elapsed_ms": 0}
        elapsed, total = self._clock.now() - trial["since"], 0
        for state, seconds in trial["stages"]:
            total += seconds
            if elapsed < total:
                return {"state": state, "detail": "", "elapsed_ms": int(elapsed * 1000)}
        return {"state": "reverted" if trial["detail"] else "ok", "detail": trial["detail"],
                "elapsed_ms": int(total * 1000)}

    def _settle(self):
        trial = self._trial
        if trial and not trial["settled"] and \
                self._clock.now() - trial["since"] >= sum(s for _, s in trial["stages"]):
            trial["settled"] = True
            if not trial["detail"]:
                self.joined = trial["ssid"]

    def restart(self, off):
        """An attempt to join ends with a restart; a network that was joined stays."""
        self._settle()
        self._trial = None
        self.off = off

    def put_on(self, ssid):
        """On this network from now on, without joining it; on none if it has no name."""
        self.joined, self._trial = ssid or None, None

    def forget(self):
        self.put_on(None)

    def status(self):
        ip = self.ip
        rssi = next((n.rssi for n in self.networks if n.ssid == self.joined), FIRST_RSSI)
        state = "off" if self.off else "connected" if ip else "disconnected"
        return {"wifi_sta_ssid": self.joined or "", "wifi_sta_ip": ip, "wifi_sta_status": state,
                **({"wifi_sta_rssi": rssi} if ip else {}), "wifi_provision": self.provision()}
