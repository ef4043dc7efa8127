# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The command line."""

import argparse
import os
import re

import games

DEVICE = re.compile(r"(?P<id>[^=@]+)(=(?P<nickname>.*?))?(@(?P<address>[A-Za-z0-9.:-]+))?")
ACCOUNT = re.compile(r"(?P<email>[^:]+):(?P<password>.+?)(:(?P<code>\d{6}))?")
TOKEN = re.compile(r"(?P<id>[^=]+)=(?P<token>.+)")
PASSWORD = re.compile(r"(?P<id>[^=]+)=(?P<password>.+)")
PORT = re.compile(r"(?P<id>[^@]+)(@(?P<path>/.+))?")
BLE = re.compile(r"(?P<id>[^@]+)(@(?P<path>[0-9A-F]{2}(:[0-9A-F]{2}){5}))?")
FEED_PORT = 1010
FIRST_PORT = "/dev/ttyACM0"
REHEARSAL = {"feed_port": 2010, "lan_port": 8081, "password": "rehearsal"}
FIRST_ADDRESS = "C0:FF:EE:00:00:01"


def _matching(pattern, form):
    def parse(text):
        match = pattern.fullmatch(text)
        if not match:
            raise argparse.ArgumentTypeError(f"must have the form {form}")
        return match.groupdict()
    return parse


def _port(text):
    if not text.isdecimal() or int(text) > 65535:
        raise argparse.ArgumentTypeError("must be a port from 0 to 65535")
    return int(text)


def _number_up_to(limit):
    def parse(text):
        try:
            number = float(text)
        except ValueError:
            number = 0
        if not 0 < number <= limit:
            raise argparse.ArgumentTypeError(f"must be a number above 0 and up to {limit}")
        return number
    return parse


def arguments(about):
    parser = argparse.ArgumentParser(
        prog="python3 sim", description=about,
        epilog="When it is ready it prints one line of JSON with its addresses, ports and tokens. "
               "It ends on Ctrl+C. docs/simulator.md tells the rest.")
    add = parser.add_argument
    add("--rehearse", action="store_true",
        help="devices that a person reaches from OBS's setup dialog by their address, and a word "
             f"about how: --feed-port {REHEARSAL['feed_port']} --lan-port {REHEARSAL['lan_port']} and "
             f"the password \"{REHEARSAL['password']}\", as far as these aren't given")
    add("--host", default="127.0.0.1", help="address of the portal and the devices (%(default)s)")
    add("--portal-port", type=_port, default=8443, metavar="N", help="(%(default)s; 0: any free)")
    add("--feed-port", type=_port, metavar="N",
        help=f"port of a device's feed ({FEED_PORT}); further devices on the same address "
             "take the next ones")
    add("--lan-port", type=_port, metavar="N",
        help="port of a device's administration by HTTP (none without this; devices have it on "
             "80); further devices on the same address take the next ones")
    add("--updates", metavar="DIR",
        help="offer the update manifest latest.json and the packages that lie in DIR")
    add("--updates-port", type=_port, default=8444, metavar="N",
        help="HTTPS port for them (%(default)s)")
    add("--control-port", type=_port, default=8099, metavar="N",
        help="port of the control requests, on 127.0.0.1 only (%(default)s)")
    add("--account", action="append", metavar="EMAIL:PASSWORD[:CODE]",
        type=_matching(ACCOUNT, "EMAIL:PASSWORD[:CODE]"),
        help="repeatable; six digits as CODE make the second step required "
             "(crew@example.com:scoreboard)")
    add("--device", action="append", metavar="ID[=NICKNAME][@ADDRESS]",
        type=_matching(DEVICE, "ID[=NICKNAME][@ADDRESS]"),
        help="repeatable (TF-1001=Main gym)")
    add("--token", action="append", default=[], metavar="ID=TOKEN",
        type=_matching(TOKEN, "ID=TOKEN"), help="a device's access token; else a random one")
    add("--session-cookie", metavar="VALUE",
        help="a session that is open from the start for the first account")
    add("--game", default="basketball", metavar="NAME",
        help=f"{', '.join(games.BUILT_IN)} or a script FILE.json (%(default)s)")
    add("--seed", type=int, default=1, metavar="N",
        help="the same seed gives the same game (%(default)s)")
    add("--speed", type=_number_up_to(1000), default=1.0, metavar="X",
        help="of the game, times real time (%(default)s)")
    add("--manual", action="store_true", help="the game stands; it moves by control requests only")
    add("--usb", action="append", default=[], metavar="ID[@PATH]",
        type=_matching(PORT, "ID[@/PATH]"),
        help=f"repeatable; this device is on a serial port ({FIRST_PORT} and the next ones)")
    add("--receiver", action="append", default=[], metavar="ID[@PATH]",
        type=_matching(PORT, "ID[@/PATH]"),
        help="repeatable; a wireless receiver that is paired with this device is on one")
    add("--ble", action="append", default=[], metavar="ID[@ADDRESS]",
        type=_matching(BLE, "ID[@C0:FF:EE:00:00:01]"),
        help="repeatable; this device can be found by Bluetooth, on a private D-Bus")
    add("--admin-password", action="append", default=[], metavar="ID=PASSWORD",
        type=_matching(PASSWORD, "ID=PASSWORD"),
        help="a device's password; else a random one. quietmoose is that of a new device")
    add("--pace", type=_number_up_to(10000), default=1.0, metavar="X",
        help="how much faster than in reality the devices restart, join networks and update "
             "themselves (%(default)s)")
    add("--cert", metavar="FILE", help="TLS certificate, PEM; else one is made with openssl")
    add("--key", metavar="FILE", help="the certificate's private key")
    add("--ca-dir", metavar="DIR",
        help="keep a certificate authority in DIR and issue the certificate from it")
    return _checked(parser, parser.parse_args())


def _checked(parser, options):
    if bool(options.cert) != bool(options.key):
        parser.error("--cert and --key go together")
    if options.cert and options.ca_dir:
        parser.error("--ca-dir makes a certificate; it cannot go with --cert")
    options.account = options.account or [ACCOUNT.fullmatch(
        "crew@example.com:scoreboard").groupdict()]
    options.device = options.device or [DEVICE.fullmatch("TF-1001=Main gym").groupdict()]
    ids = [device["id"] for device in options.device]
    if len(set(ids)) < len(ids):
        parser.error("two devices have the same id")
    if options.updates and not os.path.isdir(options.updates):
        parser.error(f"--updates: there is no folder {options.updates}")
    options.token = {entry["id"]: entry["token"] for entry in options.token}
    options.admin_password = {e["id"]: e["password"] for e in options.admin_password}
    _fill_in(options, ids)
    options.usb, options.receiver = _ports(parser, options)
    options.ble = _places(parser, "Bluetooth address", FIRST_ADDRESS, options.ble)[0]
    for name in ("token", "admin_password", "usb", "receiver", "ble"):
        unknown = set(getattr(options, name)) - set(ids)
        if unknown:
            parser.error(f"--{name.replace('_', '-')} names no device of this venue: "
                         f"{', '.join(sorted(unknown))}")
    return options


def _fill_in(options, ids):
    """What a rehearsal has by itself, and the port that devices have for their feed."""
    if options.rehearse:
        options.admin_password = dict.fromkeys(ids, REHEARSAL["password"]) | options.admin_password
        options.lan_port = REHEARSAL["lan_port"] if options.lan_port is None else options.lan_port
    if options.feed_port is None:
        options.feed_port = REHEARSAL["feed_port"] if options.rehearse else FEED_PORT


def _ports(parser, options):
    """The paths of the devices' and the receivers' ports, by device id."""
    return _places(parser, "path", FIRST_PORT, options.usb, options.receiver)


def _places(parser, name, first, *kinds):
    """For each kind of wishes the places by device id; those without one get the next free one."""
    wishes = [wish for kind in kinds for wish in kind]
    taken = {wish["path"] for wish in wishes if wish["path"]}
    names = (f"{first[:-1]}{int(first[-1]) + number}" for number in range(100))
    free = (name for name in names if name not in taken)
    for wish in wishes:
        wish["path"] = wish["path"] or next(free)
    if len({wish["path"] for wish in wishes}) < len(wishes):
        parser.error(f"two of them have the same {name}")
    found = [{wish["id"]: wish["path"] for wish in kind} for kind in kinds]
    if sum(map(len, found)) < len(wishes):
        parser.error("a device can have one port, one receiver and one Bluetooth address")
    return found
