# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the tabs about a device, in a real OBS, used with the mouse and the keyboard."""

import contextlib

from docks import opened, signed_out, status
from obs_session import wait_until
from setup import SetupWindow
from setups import DEVICE, KNOWN, LIVE, OWN, cable, plugged_in
from stage import Score, check
from window import Window, has

NEXT = "courtside 2027"
OVER_NETWORK = status("Live from Main gym over your network")
FIRMWARE, CHIP = "tallyforgeFirmwareStatus", "tallyforgeChipStatus"


@contextlib.contextmanager
def managed(stage, sim, is_live=False, home=None):
    """The tabs about the device on the cable, in an OBS that may follow it."""
    with opened(stage, home or signed_out(stage)) as (obs, dock):
        setup = SetupWindow(dock)
        manage(setup, sim)
        if is_live:
            setup.click("tallyforgeUseManaged")
            setup.wait_until_closed()
            dock.wait_for_text("tallyforgeStatus", LIVE)
            manage(setup, sim, password=None)
        yield obs, dock, setup


def manage(setup, sim, password=OWN):
    """From the dock to the tabs, past the pages of the first setup where the device is on no Wi-Fi."""
    setup.open()
    reconnect(setup, sim, password)


def reconnect(setup, sim, password=OWN):
    setup.connect()
    if password:
        setup.wait_for("tallyforgeAdminPassword", focus=True)
        setup.sign_in(password)
    if not sim.device(DEVICE)["admin"]["wifi"].get("wifi_sta_ssid"):
        setup.click("tallyforgeSkipWifi")
        setup.click("tallyforgeSkipController")
        setup.click("tallyforgeMoreSettings")
    setup.wait_for("tallyforgeRefreshStatus")


def setting(key):
    return "tallyforgeSetting_" + key


def save(setup):
    setup.click("tallyforgeSaveSettings")
    setup.wait_for_text("tallyforgeMessage", "Saved. The device is switching to the new settings.")
    setup.wait_until_gone("tallyforgeMessage")   # it has been loaded anew


def manager_settings(stage):
    """Settings that are changed, refused and loaded again, with both kinds of radio."""
    with cable(stage) as sim, managed(stage, sim) as (_, _, setup):
        setup.show_tab("Settings")
        setup.wait_for(setting("manufacturer"), currentText="daktronics")
        setup.wait_until_gone("tallyforgeMessage")
        setup.toggle(setting("test_cloud_data_enabled"))
        setup.fill(setting("usb_tunnel_port"), "18884")
        sim.fault("usb", "error", method="setSettings", message="Not now.")
        setup.click("tallyforgeSaveSettings")
        setup.wait_for_text("tallyforgeMessage", "Not now.")
        check(setup.find(setting("usb_tunnel_port"))["text"] == "18884", "it stays as typed")
        sim.clear("usb")
        save(setup)
        kept = sim.device(DEVICE)["admin"]["settings"]
        check(kept["test_cloud_data_enabled"] and kept["usb_tunnel_port"] == 18884, f"kept {kept}")

        for maker, radio, key, typed, sent in (
                ("oes", "Wireless input (Xbee)", "xbee_pan_id", "a1", 0xA1),
                ("daktronics", "Wireless input (RM024)", "wireless_group", "7", 7)):
            setup.pick(setting("manufacturer"), maker)
            setup.pick(setting("input_type"), "wireless")
            setup.wait_for("tallyforgeWirelessInput", title=radio)
            setup.fill(setting(key), typed)
            save(setup)
            kept = sim.device(DEVICE)["admin"]
            check(kept["settings"][key] == sent, f"kept {kept['settings']}")
            check(kept["controller"]["manufacturer"] == maker, f"reads {kept['controller']}")
        setup.show_tab("Status")
        setup.show_tab("Settings")
        setup.wait_for(setting("wireless_group"), text="7")


def manager_security(stage):
    """A new token under a live route over the network, and a new password that the account keeps."""
    with stage.venue(options=KNOWN) as sim:
        home = stage.lan_home()
        with opened(stage, home) as (obs, dock):
            dock.wait_for_text("tallyforgeStatus", has("over your network"))
            score = Score(obs)
            score.follows(sim, home_score=1)
            setup = SetupWindow(dock)
            manage(setup, sim, password=None)   # the account knows it
            setup.show_tab("Security")
            setup.wait_for_text("tallyforgeFingerprint", lambda text: len(text) > 60)
            auths = sim.device(DEVICE)["feed_auths"]
            setup.ask_then("tallyforgeNewToken", "New access token – " + DEVICE, "No")
            check(sim.device(DEVICE)["feed_auths"] == auths, "nothing is asked of the device")
            setup.ask_then("tallyforgeNewToken", "New access token")
            setup.wait_for_text("tallyforgeMessage", "Copy the token now – it is not shown again.")
            token = setup.find("tallyforgeToken")["text"]
            check(token == sim.call("/secrets")["devices"][DEVICE]["token"], "it is the device's")
            check(home.settings()["lan"][DEVICE]["token"] == token, "it is stored")
            wait_until(lambda: sim.device(DEVICE)["feed_auths"] > auths, what="the feed to come back")
            score.follows(sim, home_score=2)
            dock.wait_for_text("tallyforgeStatus", OVER_NETWORK)

            setup.click("tallyforgeShowPasskey")
            setup.wait_for_text("tallyforgePasskey", lambda text: len(text) == 6)
            change_password(setup, "not it", NEXT)
            setup.wait_for_text("tallyforgeMessage", has("password"))
            change_password(setup, OWN, NEXT)
            setup.wait_for_text("tallyforgeMessage", "Password changed.")
            secrets = sim.call("/secrets")["devices"][DEVICE]
            check(secrets["device_password"] == NEXT, "the device has taken it")
            wait_until(lambda: sim.call("/secrets")["devices"][DEVICE]["admin_password"] == NEXT,
                       what="the account to keep it")
            setup.click("tallyforgeDisconnect")
            reconnect(setup, sim, password=None)
            score.follows(sim, home_score=3)


def change_password(setup, current, new):
    setup.fill("tallyforgeCurrentPassword", current)
    setup.fill("tallyforgeNextPassword", new)
    setup.fill("tallyforgeNextPasswordAgain", new)
    setup.key("Return")


def manager_update(stage):
    """A device without a network updates both its processors, through this computer."""
    with cable(stage) as sim:
        sim.admin(DEVICE, firmware={"waits": True, "bytes": 300000}, chip={"waits": True})
        with managed(stage, sim, is_live=True) as (obs, dock, setup):
            score = Score(obs)
            setup.show_tab("Updates")
            setup.wait_for_text("tallyforgeFirmwareVersion", "Running: 2.4.0")
            setup.click("tallyforgeCheckUpdate")
            offered = sim.device(DEVICE)["admin"]["firmware"]
            setup.wait_for_text("tallyforgeMessage", has("is available."))
            setup.ask_then("tallyforgeInstallUpdate", "Install update")
            setup.wait_for_text(FIRMWARE, has("Downloading… "))
            score.follows(sim, home_score=1)
            check(sim.device(DEVICE)["admin"]["firmware"]["tunnelled"], f"not {offered}")
            setup.show_tab("Cloud")   # another tab doesn't stop the look at it
            setup.wait_for_text("tallyforgeShareStatus", has("(downloading now: "))
            setup.show_tab("Updates")
            setup.wait_for_text(FIRMWARE, has("Verifying and applying the update…"))
            setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>")
            setup.click("tallyforgeCancel")
            plugged_in(sim)
            reconnect(setup, sim)
            score.follows(sim, home_score=2)
            dock.wait_for_text("tallyforgeStatus", LIVE)
            setup.show_tab("Updates")
            version = sim.device(DEVICE)["admin"]["firmware"]["version"]
            check(version != "2.4.0", "it runs what was offered")
            setup.wait_for_text("tallyforgeFirmwareVersion", f"Running: {version}")
            setup.ask_then("tallyforgeUpdateChip", "Update wireless chip")
            setup.wait_for_text(CHIP, has("Working… ("))
            setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>")
            setup.click("tallyforgeCancel")
            plugged_in(sim)
            reconnect(setup, sim)
            score.follows(sim, home_score=3)


def manager_refused(stage):
    """Updates that fail, that are refused, and over which the device falls silent."""
    with cable(stage) as sim, managed(stage, sim) as (_, _, setup):
        setup.show_tab("Updates")
        sim.admin(DEVICE, firmware={"error": "flash is full", "waits": True, "bytes": 200000})
        setup.click("tallyforgeCheckUpdate")
        setup.ask_then("tallyforgeInstallUpdate", "Install update")
        setup.wait_for_text(FIRMWARE, "Update failed: flash is full")
        setup.wait_for("tallyforgeCheckUpdate", enabled=True)
        sim.admin(DEVICE, firmware={"offered": None}, chip={"stages": [["transferring", 500]]})
        setup.click("tallyforgeCheckUpdate")
        setup.wait_for_text("tallyforgeMessage", "Up to date.")
        sim.fault("usb", "error", method="c6OtaStatus", message="Busy.", after=2, count=6)
        setup.ask_then("tallyforgeUpdateChip", "Update wireless chip")
        setup.wait_for_text(CHIP, "Lost contact with the device (it may be restarting).")


def manager_tools(stage):
    """The way to the cloud, the log, another name, a restart and the way back to the factory state."""
    with cable(stage) as sim, managed(stage, sim) as (_, _, setup):
        setup.show_tab("Cloud")
        for _ in range(2):
            setup.wait_for_text("tallyforgeShareStatus", has("as soon as the device asks."))
            sim.call("/usb/pipe", {"device": DEVICE, "send": 2048})
            setup.wait_for_text("tallyforgeShareStatus",
                                has("Connected to the cloud through this computer.  Sent "))
            setup.toggle("tallyforgeShareConnection")
            setup.wait_for_text("tallyforgeShareStatus", has("Sharing is off"))
            setup.toggle("tallyforgeShareConnection")
        setup.fill("tallyforgeDeviceId", "TF-2002")
        setup.key("Return")
        setup.wait_for_text("tallyforgeMessage", "Saved.")
        check(sim.device(DEVICE)["admin"]["device_id"] == "TF-2002", "it has the other name")
        setup.ask_then("tallyforgeForgetCloud", "Forget cloud sign-in")
        setup.wait_for_text("tallyforgeMessage", "Done. The device no longer has cloud credentials.")
        check(not sim.device(DEVICE)["admin"]["cloud_account"], "it has forgotten")

        setup.show_tab("Advanced")
        sim.admin(DEVICE, log_bytes=1 << 20)
        setup.click("tallyforgeShowLog")
        setup.wait_for("tallyforgeLog", plainText=lambda text: len(text) > 60000)
        setup.ask_then("tallyforgeRestartDevice", "Restart device")
        setup.wait_for_text("tallyforgeMessage", "Restarting…")
        wait_until(lambda: sim.device(DEVICE)["admin"]["restarts"] == 1, what="the restart")
        setup.click("tallyforgeDisconnect")
        wait_until(lambda: not sim.device(DEVICE)["admin"]["down"], what="the device to be back")
        reconnect(setup, sim)
        setup.show_tab("Advanced")
        reset(setup, "reset", "OK")
        reset(setup, " RESET ", "OK")
        wait_until(lambda: sim.device(DEVICE)["admin"]["must_change_password"], what="the reset")
        setup.wait_for_text("tallyforgeSetupTitle", "<b>Connection lost</b>")


def reset(setup, text, button):
    setup.click("tallyforgeFactoryReset")
    wait_until(lambda: any(widget["focus"] for widget in setup.window("Factory reset") or []),
               what="the question")
    setup.desktop.type(text)
    setup.answer("Factory reset", button)


def manager_closing(stage):
    """The dialog is closed, and opened again, in the middle of what the tabs do."""
    with cable(stage) as sim, managed(stage, sim) as (_, _, setup):
        sim.admin(DEVICE, firmware={"bytes": 300000})
        for tab, button, question in (("Advanced", "tallyforgeShowLog", None),
                                      ("Security", "tallyforgeShowPasskey", None),
                                      ("Cloud", "tallyforgeForgetCloud", "Forget cloud sign-in"),
                                      ("Updates", "tallyforgeCheckUpdate", None)):
            sim.fault("usb", "silent")
            setup.show_tab(tab)
            setup.click(button)
            if question:
                setup.answer(question, "Yes")
            setup.close()
            sim.clear("usb")
            manage(setup, sim)
        setup.show_tab("Updates")
        setup.click("tallyforgeCheckUpdate")
        setup.ask_then("tallyforgeInstallUpdate", "Install update")
        setup.wait_for_text(FIRMWARE, has("Downloading… "))
        setup.close()   # the computer stays the device's way to the update
        wait_until(lambda: sim.device(DEVICE)["admin"]["firmware"]["version"] != "2.4.0", timeout=60,
                   what="the update to come to its end")


def manage_account(stage):
    """A device reached through the account: online, late, offline, and with the dialog closed."""
    with stage.venue(options=KNOWN) as sim, opened(stage, stage.home()) as (_, dock):
        dock.wait_for("tallyforgeManageDevice", enabled=True)

        def managing():
            dock.click("tallyforgeManageDevice")
            dialog = Window(dock.desktop, "tallyforgeManageDialog")
            wait_until(dialog.is_open, what="the dialog about the device")
            dialog.place(40, 480, 640)
            return dialog

        def asks(name, answer):
            dialog.wait_for(name, enabled=True)
            dialog.click(name)
            if name == "tallyforgeRestartManaged":
                wait_until(lambda: dialog.window("Restart device"), what="the question")
                dialog.press("Restart device", "Yes")
            dialog.wait_for_text("tallyforgeManageMessage", answer)
        dialog = managing()
        dialog.key("Return")
        dialog.wait_for_text("tallyforgeManageMessage", "Status received.")
        dialog.wait_for("tallyforgeManageOutput", plainText=has("fw_version: "))
        dialog.pick("tallyforgeMaker", "NEVCO")
        dialog.pick("tallyforgeSport", "Hockey")
        asks("tallyforgeChangeScoreboard", "The device accepted the new scoreboard.")
        check(sim.device(DEVICE)["admin"]["controller"]["sport"] == "hockey", "the device has it")
        asks("tallyforgeCheckFirmware", "Update check finished.")
        dialog.wait_for("tallyforgeManageOutput", plainText=has('"version": '))
        path = f"/devices/{DEVICE}/cmd/"
        sim.fault("portal", "slow", path=path, seconds=2)
        asks("tallyforgeCheckStatus", "Asking the device…")
        dialog.key("Escape")
        wait_until(lambda: not dialog.is_open(), what="the dialog to close")
        sim.clear("portal")
        dialog = managing()
        sim.fault("device", "offline")
        asks("tallyforgeCheckStatus", has("The device did not answer."))
        asks("tallyforgeRestartManaged", "The device is offline; it will restart when it reconnects.")
        sim.clear("device")
        wait_until(lambda: sim.device(DEVICE)["admin"]["restarts"] == 1, what="the restart")
        wait_until(lambda: not sim.device(DEVICE)["admin"]["down"], what="the device to be back")
        asks("tallyforgeRestartManaged", "Restart sent.")
