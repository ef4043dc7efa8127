# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A venue in software: a portal and devices with their live feeds, for rehearsals and tests."""

import argparse
import asyncio
import json
import os
import re
import signal
import sys
import time

import games
from certs import CertError, server_context
from control import Control
from faults import Faults
from faults_lan import LanFaults
from faults_usb import UsbFaults
from feed import Feed
from hardware import Hardware
from lan_admin import LanFace
from net import ListenError, is_loopback, log, quoted_host
from portal import Portal
from updates import Updates
from venue import Venue

DEVICE = re.compile(r"(?P<id>[^=@]+)(=(?P<nickname>.*?))?(@(?P<address>[A-Za-z0-9.:-]+))?")
ACCOUNT = re.compile(r"(?P<email>[^:]+):(?P<password>.+?)(:(?P<code>\d{6}))?")
TOKEN = re.compile(r"(?P<id>[^=]+)=(?P<token>.+)")
PASSWORD = re.compile(r"(?P<id>[^=]+)=(?P<password>.+)")
PORT = re.compile(r"(?P<id>[^@]+)(@(?P<path>/.+))?")
FIRST_PORT = "/dev/ttyACM0"
TICK_SECONDS = 0.1


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


def _arguments():
    parser = argparse.ArgumentParser(
        prog="python3 sim", description=__doc__,
        epilog="When it is ready it prints one line of JSON with its addresses, ports and tokens. "
               "It ends on Ctrl+C. docs/simulator.md tells the rest.")
    add = parser.add_argument
    add("--host", default="127.0.0.1", help="address of the portal and the devices (%(default)s)")
    add("--portal-port", type=_port, default=8443, metavar="N", help="(%(default)s; 0: any free)")
    add("--feed-port", type=_port, default=1010, metavar="N",
        help="port of a device's feed (%(default)s); further devices on the same address "
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
    options.usb, options.receiver = _ports(parser, options)
    for name in ("token", "admin_password", "usb", "receiver"):
        unknown = set(getattr(options, name)) - set(ids)
        if unknown:
            parser.error(f"--{name.replace('_', '-')} names no device of this venue: "
                         f"{', '.join(sorted(unknown))}")
    return options


def _ports(parser, options):
    """The paths of the devices' and the receivers' ports, by device id."""
    wishes = [*options.usb, *options.receiver]
    taken = {wish["path"] for wish in wishes if wish["path"]}
    names = (f"{FIRST_PORT[:-1]}{number}" for number in range(100))
    free = (name for name in names if name not in taken)
    for wish in wishes:
        wish["path"] = wish["path"] or next(free)
    if len({wish["path"] for wish in wishes}) < len(wishes):
        parser.error("two ports have the same path")
    found = [{wish["id"]: wish["path"] for wish in some}
             for some in (options.usb, options.receiver)]
    if sum(map(len, found)) < len(wishes):
        parser.error("a device can have one port and one receiver")
    return found


def _venue(options):
    venue = Venue()
    for account in options.account:
        venue.add_account(account["email"], account["password"], account["code"] or "")
    if options.session_cookie:
        venue.open_session(options.account[0]["email"], options.session_cookie)
    for number, device in enumerate(options.device):
        venue.add_device(device["id"], device["nickname"] or "",
                         device["address"] or options.host, options.token.get(device["id"]),
                         games.load(options.game, options.seed + number),
                         options.admin_password.get(device["id"]))
    return venue


def _with_ports(venue, first_port):
    """Each device with its port: those on the same address take one after the other."""
    taken = {}
    for device in venue.devices.values():
        yield device, first_port and first_port + taken.get(device.address, 0)
        taken[device.address] = taken.get(device.address, 0) + 1


def _feeds(venue, faults, first_port, tls):
    return {device.id: Feed(venue, faults, device, port, tls)
            for device, port in _with_ports(venue, first_port)}


def _lan_faces(venue, faults, first_port, admins):
    if first_port is None:
        return {}
    return {device.id: LanFace(venue, faults, admins[device.id], port)
            for device, port in _with_ports(venue, first_port)}


async def _play(venue, speed):
    """Lets the games of all devices run, each event at its time."""
    last = time.monotonic()
    while True:
        running = [device for device in venue.devices.values() if not device.game.finished]
        waits = [device.game.seconds_to_next() / speed for device in running]
        # Never long: a step from outside may bring the next event nearer meanwhile.
        await asyncio.sleep(max(0.01, min([TICK_SECONDS, *waits])))
        now = time.monotonic()
        for device in running:
            before = device.game.position
            fields = device.game.advance((now - last) * speed)
            if device.game.position != before:
                venue.change(device, fields)
        last = now


def _ready(options, venue, portal, control, hardware, lan, updates, authority):
    host = "localhost" if is_loopback(options.host) and ":" not in options.host \
        else quoted_host(options.host)
    devices = [{"id": d.id, "nickname": d.nickname, "host": d.address, "port": d.port,
                "token": d.token,
                "lan": lan[d.id].url if d.id in lan else None} for d in venue.devices.values()]
    print(json.dumps({
        "ready": True, "portal": f"https://{host}:{portal.listener.port}",
        "portal_port": portal.listener.port,
        "control": f"http://127.0.0.1:{control.listener.port}",
        "devices": devices, "usb": hardware.ready(),
        "updates": updates and updates.url(host), "ca": authority}), flush=True)


async def _run(options):
    loop = asyncio.get_running_loop()
    stop = asyncio.Event()
    for number in (signal.SIGINT, signal.SIGTERM):
        loop.add_signal_handler(number, stop.set)
    venue, faults = _venue(options), Faults(UsbFaults(), LanFaults())
    tls, fingerprint, authority = server_context(options.host, options.cert, options.key,
                                                 options.ca_dir)
    portal = Portal(venue, faults, options.host, options.portal_port, tls)
    feeds = _feeds(venue, faults, options.feed_port, tls)
    hardware = Hardware(venue, faults, options.pace, fingerprint, options.usb, options.receiver)
    lan = _lan_faces(venue, faults, options.lan_port, hardware.admins)
    venue.on_change = lambda device: {"feed_ns": feeds[device.id].publish(),
                                      "usb_ns": hardware.publish(device)}
    game = {"name": options.game, "seed": options.seed, "speed": options.speed,
            "manual": options.manual}
    updates = options.updates and Updates(venue, faults, options.host, options.updates_port,
                                          options.updates, tls)
    control = Control(options.control_port, venue, faults, portal, feeds, hardware, lan, updates,
                      game)
    listeners = [server.listener for server in (portal, control, *feeds.values(), *lan.values(),
                                                *([updates] if updates else []))]
    for listener in listeners:
        listener.open()
    hardware.open()
    tasks = [loop.create_task(feed.heartbeats()) for feed in feeds.values()]
    if not options.manual:
        tasks.append(loop.create_task(_play(venue, options.speed)))
    _ready(options, venue, portal, control, hardware, lan, updates, authority)
    await stop.wait()
    for task in tasks:
        task.cancel()
    await asyncio.gather(hardware.close(), *(listener.close() for listener in listeners))
    log("the venue is closed")


def main():
    try:
        asyncio.run(_run(_arguments()))
    except (ListenError, CertError, games.GameError) as error:
        sys.exit(f"sim: {error}")


if __name__ == "__main__":
    main()
