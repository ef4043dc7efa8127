#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

"""Checks that docs/messages.md explains every sentence of the product that tells of a fault or asks for
something, and none that the product doesn't say. What the product says stands in the translation's
source, which check_translations.py keeps complete."""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

PAGE = Path("docs/messages.md")
TEXTS = Path("translations/tallyforge.ts")
LOCALE = Path("data/locale/en-US.ini")

# Whatever these say is shown where something has gone wrong, or tells how a connection goes.
ALL_OF = {"BleReplyAssembler", "BleBridge", "BleHelperLines", "BleLink", "BleTransport", "BluetoothHelper",
          "DeviceSession", "HostedServer", "HttpAdminTransport", "HttpAnswer", "HttpLink", "PortalClient",
          "ReceiverRequest", "RpcClient", "SerialPort", "SourceManager", "TlsFeed", "UsbAdminTransport",
          "UsbLink", "UsbRelays", "PluginUpdater"}
SENTENCE = re.compile(r"[.!?…:]$")
# A fault that is told in a title, or by a word after a colon.
TOLD = re.compile(r"(?i)\b(lost|failed|error|could not|cannot|not connected|needed|no graphics|choose a new|"
                  r"make a new token|may be in use|waiting)\b")

# What fits the rules above and asks for nothing: progress and success, explanations that always stand
# there, and labels.
FINE = """
Live from %1
Live from %1 over your network
Connecting to %1…
Connecting to %1 on your network…
Waiting for the device to answer. If it just powered on this can take up to a minute.
Connecting over Bluetooth. If your computer asks for a passkey, enter the 6-digit number from the device's label.
Contacting the device on your network…
Connecting to the paired device through the receiver
Asking the device over the wireless link. This can take up to a minute.
Connecting…
Signing in…
Signing in with the password saved on your account…
Saving the new password…
Looking for devices… (about 6 seconds)
%1 device(s) found.
%1 USB port(s) found. Pick the Tallyforge device.
Scanning… this can take up to 15 seconds.
%1 network(s) found.
Sending the network to the device…
Checking that the device can join %1…
Checking that the device can join %1… (%2 s)
Joined %1%2.
Switching off the wireless transmitter…
The device is restarting to use Wi-Fi.
Switching to the wireless receiver…
The device is restarting and will send its scores to the wireless receiver. Wi-Fi is off.
Loading…
Loading the list…
Saving…
Saved.
Saved. The device is switching to the new settings.
Currently set to this scoreboard.
Added to your account.
Done. The device no longer has cloud credentials.
Sending to the receiver…
Saved. The receiver restarts to apply it.
Paired with a device.
Receiving from the device now.
Still running…
All checks passed.
Running…
Restarting…
Reading the log…
Password reset.
Password changed.
The device is resetting.
Checking…
Version %1 is available.
Up to date.
Starting the update…
Downloading… %1%
Verifying and applying the update…
Working… (%1)
Asking the device…
The device answered.
Status received.
Sending to the device…
The device accepted the new scoreboard.
Checking for a firmware update…
Update check finished.
Restart sent.
Checking for updates…
Downloading version %1…
Downloading version %1… %2%
Installing version %1…
Tallyforge %1 is up to date.
Tallyforge %1 is available (you have %2).
 Checked %1.
the Tallyforge website
Off.
Connect to %1:%2 and read one JSON line per update. %3 connected.
Connected to the cloud through this computer.  Sent %1, received %2.
connected to the cloud through this computer
Ready. This computer connects to %1 as soon as the device asks.
Firmware updates for a device with no Wi-Fi or Ethernet also download through this computer%1.
wireless receiver
USB device
%1: %2
You do not need a Tallyforge account for this. Connect with a USB cable, Bluetooth, or over your local network.
Type the device's number (the last digits of its name) or its network address. This computer and the device must be on the same network.
The admin password is sent over your local network without encryption. Use USB when you can.
Use the USB port on the device (or on the wireless receiver). Close any serial monitor first.
The device must be paired with this computer first. The 6-digit passkey is on the device's label and in your Tallyforge account.
Pick the scoreboard this device is connected to. Each choice narrows the next.
Pick the venue's network. The device uses it to reach your account and the internet.
This device connects over Wi-Fi. It is also paired with a Tallyforge wireless receiver%1, so it can send its scores there instead.
This device connects over Wi-Fi. If the venue has no Wi-Fi it can send its scores to a Tallyforge wireless receiver instead.
Checks the device's local network, internet and cloud connection. Takes about 15 seconds.
Other programs can read this device's live scores over the network with an access token.
The passkey this computer or phone enters the first time it pairs over Bluetooth. It is only shown over a cable or the network.
Identifies this device in your Tallyforge account. Only change it if instructed by support.
These actions reach the device through your Tallyforge account, so it must be online.
Graphics come from your Tallyforge account. Pick one from the list in the source's properties.
Sign in to see your account's devices and graphics. Not needed to set up or manage a device, or to show scores from one connected to this computer.
A field's name in braces shows its value, for example {home_score}. Fields: %1
Set up or manage a device…
Manage the selected device through my account…
Set up or manage the paired Tallyforge device through this receiver…
Set up a Tallyforge wireless receiver instead of Wi-Fi…
More settings and tools…
Reset admin password to the factory password…
Factory reset…
Forget cloud sign-in on this device…
Forgot password?
Password change needed
""".split("\n")

ANY = "‹›"


def plain(text):
    """Without what differs from case to case and without differences of white space."""
    return " ".join(re.sub(r"%L?\d", ANY, text).split())


def said():
    """All texts of the product: in how many contexts, by the text."""
    for context in ElementTree.parse(TEXTS).getroot().iter("context"):
        name = context.findtext("name").rpartition("::")[2]
        for message in context.iter("message"):
            yield name, message.findtext("source")
    for line in LOCALE.read_text("utf-8").splitlines():
        if "=" in line:
            yield "", line.partition("=")[2].strip().strip('"')


def is_message(context, text):
    return context in ALL_OF or SENTENCE.search(text.rstrip()) or TOLD.search(text)


def explained():
    """The sentences in the first column of the page's tables, and how many rows explain nothing."""
    for line in PAGE.read_text("utf-8").splitlines():
        if line.startswith("|") and not line.startswith(("|---", "| It says")):
            words, meaning, *_ = (cell.strip() for cell in line.strip("|").split("|"))
            for sentence in words.split("<br>"):
                yield " ".join(re.sub(r"\*[^*]+\*", ANY, sentence).split()), bool(meaning)


def main():
    fine = {plain(text) for text in FINE if text}
    texts = {plain(text) for _, text in said()}
    wanted = {plain(text) for context, text in said() if is_message(context, text)} - fine
    rows = list(explained())
    found = [sentence for sentence, _ in rows]
    faults = [f"{PAGE} doesn't explain: {text}" for text in sorted(wanted - set(found))]
    faults += [f"{PAGE} has what the product doesn't say: {text}" for text in sorted(set(found) - texts)]
    faults += [f"{PAGE} has it twice: {text}" for text in sorted({t for t in found if found.count(t) > 1})]
    faults += [f"{PAGE} has no advice: {text}" for text, advised in rows if not advised]
    faults += [f"check_messages.py leaves out what isn't said any more: {text}" for text in sorted(fine - texts)]
    print(*faults, sep="\n", end="\n" if faults else "")
    if not wanted or faults:
        return 1
    print(f"check: messages: {len(found)} sentences are explained, {len(fine)} need no explanation")
    return 0


if __name__ == "__main__":
    sys.exit(main())
