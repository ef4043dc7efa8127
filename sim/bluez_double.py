# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A BlueZ made of D-Bus objects, with devices that take writes and notify: a template of dbusmock.

Every call that a device gets is a line of the file "log" in the folder that the parameter names. A
write stays unanswered while there is a file "hold" in it.

A device with a "Peer", the path of a socket of packets, is played by the program that listens
there: a connection is one to that socket, a write is a packet to it, and a packet from it is a
notification.
"""

import pathlib
import socket
import time

import dbus
from dbusmock import mockobject
from gi.repository import GLib
from dbusmock.templates.bluez5 import *   # pylint: disable=wildcard-import,unused-wildcard-import
from dbusmock.templates import bluez5

SERVICE, CHARACTERISTIC = "org.bluez.GattService1", "org.bluez.GattCharacteristic1"
DESCRIPTOR = "org.bluez.GattDescriptor1"
SUBSCRIPTION = "00002902-0000-1000-8000-00805f9b34fb"
YES, NO = dbus.Boolean(True), dbus.Boolean(False)
ERRORS = {}    # by method, the name of the error that it answers with


PACKET = 4096
LINKS = {}     # by path of a device, the socket that leads to the program which plays it


def load(mock, parameters):
    mock.folder = "folder" in parameters and pathlib.Path(parameters["folder"])
    bluez5.load(mock, parameters)


def called(method, *words):
    if folder := mockobject.objects["/"].folder:
        with open(folder / "log", "a", encoding="ascii") as log:
            log.write(" ".join([method, *words]) + "\n")
        while method == "WriteValue" and (folder / "hold").exists():
            time.sleep(0.002)
    if error := ERRORS.get(method):
        refuse(error)


def refuse(error):
    raise dbus.exceptions.DBusException("No.", name=error)


def link(device):
    """Connects to the program that plays a device."""
    peer = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    try:
        peer.connect(device.peer)
    except OSError:
        peer.close()
        refuse("org.bluez.Error.Failed")
    LINKS[device.path] = peer
    GLib.io_add_watch(peer, GLib.IO_IN | GLib.IO_HUP,
                      lambda *_: LINKS.get(device.path) is peer and notify(device, peer))


def notify(device, peer):
    try:
        data = peer.recv(PACKET)
    except OSError:
        data = b""
    if data:
        characteristic = mockobject.objects[device.path + "/service0001/char0002"]
        characteristic.UpdateProperties(CHARACTERISTIC, {"Value": dbus.Array(data, signature="y")})
        return True
    unlink(device)
    set_connected(device, NO)
    return False


def unlink(device):
    if peer := LINKS.pop(device.path, None):
        peer.close()


def set_connected(device, value):
    device.UpdateProperties(DEVICE_IFACE, {"Connected": value, "ServicesResolved": value})


@dbus.service.method(BLUEZ_MOCK_IFACE, in_signature="ss")
def LetFail(_self, method, error):
    ERRORS[method] = error


def connect(device):
    called("Connect")
    if device.peer and device.path not in LINKS:
        link(device)
    set_connected(device, YES)


def disconnect(device):
    called("Disconnect")
    unlink(device)
    set_connected(device, NO)


def pair(device):
    called("Pair")
    device.UpdateProperties(DEVICE_IFACE, {"Paired": YES})


def write_value(characteristic, value, options):
    called("WriteValue", bytes(value).hex(), str(options.get("type")))
    if peer := LINKS.get(characteristic.path.rsplit("/", 2)[0]):
        peer.sendall(bytes(value))


@dbus.service.method(BLUEZ_MOCK_IFACE, in_signature="sssssa{sv}", out_signature="s")
def AddScoreboard(self, adapter, address, name, service, characteristic, properties):
    """A device that offers the service. Returns the path of its characteristic."""
    path = self.AddDevice(adapter, address, name)
    device = mockobject.objects[path]
    device.peer = str(properties.pop("Peer", ""))
    device.AddMethods(DEVICE_IFACE, [("Connect", "", "", connect), ("Disconnect", "", "", disconnect),
                                     ("Pair", "", "", pair)])
    mtu = properties.pop("MTU", None)
    flags = properties.pop("Flags", ["write", "notify"])
    device.UpdateProperties(DEVICE_IFACE, {"UUIDs": dbus.Array([service], signature="s"), **properties})
    self.AddObject(path + "/service0001", SERVICE,
                   {"UUID": service, "Primary": YES, "Device": dbus.ObjectPath(path)}, [])
    at = path + "/service0001/char0002"
    values = {"UUID": characteristic, "Service": dbus.ObjectPath(path + "/service0001"),
              "Flags": dbus.Array(flags, signature="s"), "Value": dbus.ByteArray(b""), "Notifying": NO}
    if mtu is not None:
        values["MTU"] = dbus.UInt16(mtu)
    self.AddObject(at, CHARACTERISTIC, values, [
        ("WriteValue", "aya{sv}", "", write_value),
        ("StartNotify", "", "", lambda _: called("StartNotify")), ("StopNotify", "", "", "")])
    self.AddObject(at + "/desc0004", DESCRIPTOR,
                   {"UUID": SUBSCRIPTION, "Characteristic": dbus.ObjectPath(at)}, [])
    return at
