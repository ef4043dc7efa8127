# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A venue in software: a portal and devices with their live feeds, for rehearsals and tests."""

import asyncio
import json
import signal
import sys
import time
from functools import partial

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
from options import arguments
from portal import Portal
from power import GOODBYE_SECONDS
from updates import Updates
from venue import Venue

TICK_SECONDS = 0.1


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


def _feeds(venue, faults, first_port, tls, admins):
    feeds = {device.id: Feed(venue, faults, device, port, tls)
             for device, port in _with_ports(venue, first_port)}
    for device_id, feed in feeds.items():
        admin = admins[device_id]
        feed.is_served = admin.serves_feed
        admin.power.hooks.append(feed.look_again)
        admin.on_settings.append(feed.look_again)
        admin.on_token.append(partial(admin.clock.later, GOODBYE_SECONDS, feed.end_old_tokens))
    return feeds


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
        "ble": hardware.ble_ready(),
        "updates": updates and updates.url(host), "ca": authority}), flush=True)


def _explain(venue, lan):
    """For the person who rehearses. The password is one that everybody may know."""
    for device in venue.devices.values():
        address = lan[device.id].url.removeprefix("http://").rstrip("/")
        print(f"""
The scoreboard "{device.nickname or device.id}" is playing. To see it in OBS:
  1. Docks > Tallyforge, "Set up or manage a device…", "Local network".
  2. Type {address} and press "Connect".
  3. Type the password {device.admin_password} and press "Sign in to device".
  4. Press "Use live scores in OBS", and in the dock "Add live score text to this scene".
Ctrl+C ends it.""", file=sys.stderr, flush=True)


async def _run(options):
    loop = asyncio.get_running_loop()
    stop = asyncio.Event()
    for number in (signal.SIGINT, signal.SIGTERM):
        loop.add_signal_handler(number, stop.set)
    venue, faults = _venue(options), Faults(UsbFaults(), LanFaults())
    tls, fingerprint, authority = server_context(options.host, options.cert, options.key,
                                                 options.ca_dir)
    hardware = Hardware(venue, faults, options.pace, fingerprint, options.usb, options.receiver,
                        options.ble)
    portal = Portal(venue, faults, options.host, options.portal_port, tls, hardware.admins)
    feeds = _feeds(venue, faults, options.feed_port, tls, hardware.admins)
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
    if options.rehearse:
        _explain(venue, lan)
    await stop.wait()
    for task in tasks:
        task.cancel()
    await asyncio.gather(hardware.close(), *(listener.close() for listener in listeners))
    log("the venue is closed")


def main():
    try:
        asyncio.run(_run(arguments(__doc__)))
    except (ListenError, CertError, games.GameError) as error:
        sys.exit(f"sim: {error}")


if __name__ == "__main__":
    main()
