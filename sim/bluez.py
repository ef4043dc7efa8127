# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A computer's Bluetooth on a private D-Bus, where the devices of the venue can be found."""

import pathlib
import subprocess

from net import ListenError

try:
    import dbus
    from dbusmock import BusType, PrivateDBus, SpawnedMock
except ImportError:
    dbus = None

SERVICE = "20a30d61-b3f9-4b31-b57d-e1ed9b9207df"
CHARACTERISTIC = "282c602f-2c3e-4c9e-ad91-ff5fdb293004"
TEMPLATE = pathlib.Path(__file__).with_name("bluez_double.py")
DOUBLE, ADAPTER, DEVICE = "org.bluez.Mock", "org.bluez.Adapter1", "org.bluez.Device1"
MOCK = "org.freedesktop.DBus.Mock"
ADAPTER_NAME = "hci0"
NEAR, SILENT = -54, 0      # signal strengths; a device that isn't heard has none
REFUSED = "org.bluez.Error.NotPermitted"
NEEDING_PAIRING = ("Pair", "StartNotify", "WriteValue")


class Bluez:
    def __init__(self):
        if dbus is None:
            raise ListenError("--ble needs Python's packages dbus and dbusmock.")
        self._bus = PrivateDBus(BusType.SYSTEM)
        self._connection = self._mock = self._root = None
        self._paths = {}           # address -> path of the object

    def open(self):
        try:
            self._bus.start()
        except OSError as error:
            raise ListenError(f"--ble needs the program dbus-daemon: {error.strerror}.") from error
        self._connection = dbus.bus.BusConnection(self.address)
        self._connection.set_exit_on_disconnect(False)
        self._mock = SpawnedMock.spawn_with_template(str(TEMPLATE), bustype=BusType.SYSTEM,
                                                     stdout=subprocess.DEVNULL)
        self._root = self._object("/")
        self._root.AddAdapter(ADAPTER_NAME, "simulator", dbus_interface=DOUBLE)

    def close(self):
        if self._mock:
            self._mock.terminate()
        if self._connection:
            self._connection.close()
        self._bus.stop()

    @property
    def address(self):
        """Of the bus, for the environment of the program that looks for devices."""
        return self._bus.address

    def _object(self, path):
        return self._connection.get_object("org.bluez", path)

    def _update(self, path, interface, **properties):
        self._object(path).UpdateProperties(interface, properties, dbus_interface=MOCK)

    def add(self, address, name, peer, mtu):
        """A device that the program at a socket plays."""
        properties = {"Peer": peer, "MTU": dbus.UInt16(mtu), "RSSI": dbus.Int16(NEAR)}
        path = self._root.AddScoreboard(ADAPTER_NAME, address, name, SERVICE, CHARACTERISTIC,
                                        dbus.Dictionary(properties, signature="sv"),
                                        dbus_interface=DOUBLE)
        self._paths[address] = str(path).rsplit("/", 2)[0]

    def show(self, address, is_near):
        """Whether the device can be heard."""
        self._update(self._paths[address], DEVICE, RSSI=dbus.Int16(NEAR if is_near else SILENT))

    def set_powered(self, is_on):
        self._update(f"/org/bluez/{ADAPTER_NAME}", ADAPTER, Powered=dbus.Boolean(is_on))

    def set_pairing(self, is_possible):
        """When it isn't, no device is paired with the computer, and none lets itself be used."""
        for path in () if is_possible else self._paths.values():
            self._update(path, DEVICE, Paired=dbus.Boolean(False))
        for method in NEEDING_PAIRING:
            self._root.LetFail(method, "" if is_possible else REFUSED, dbus_interface=DOUBLE)
