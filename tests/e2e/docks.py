# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""What must hold for the dock in a real OBS, used with the mouse and the keyboard alone."""

import contextlib
import socket

from dock import DOCK, Dock
from obs_session import wait_until
from scenarios import CLOUD
from simulator import REPOSITORY
from stage import check
from window import has

CREW = "crew@venue.example", "correct horse battery"
COACH, SECRET, CODE = "coach@venue.example", "upper stand 7", "246810"
WRONG_PASSWORD = "That email and password did not match. Check them and try again."
WRONG_CODE = ("That code was not accepted. Enter the current 6-digit code from your "
              "authenticator app.")
PORT, OTHER_PORT = 9001, 9055
TAKEN = f"Could not listen on port {PORT}: The bound address is already in use"
GREEN, YELLOW = "#3cb371", "#d9a441"
NARROW = 250
FAILED = REPOSITORY / "build/dock-failed.png"


def status(text, colour=GREEN):
    return f'<span style="color:{colour}">●</span> {text}'


@contextlib.contextmanager
def opened(stage, home, is_open=False, run=None, **options):
    """OBS with the dock; is_open when an earlier run may have left it open. A failure leaves a picture
    of the screen. run makes a run of OBS other than one that must end well."""
    home.install(stage.built.finder, "dock-finder")
    with (run or stage.obs)(home, **options) as obs:
        dock = Dock(stage.screen, home.folder / "finder")
        try:
            if not (is_open and dock.is_open()):
                dock.open()
            yield obs, dock
        except Exception:
            stage.screen.screenshot(FAILED)
            raise


def signed_out(stage, **options):
    home = stage.home(**options)
    (home.module_config / "session.json").unlink()
    return home


def dock_sign_in(stage):
    with stage.venue(options=("--account", f"{COACH}:{SECRET}:{CODE}")) as sim:
        with opened(stage, signed_out(stage)) as (_, dock):
            page = dock.page()
            check("tallyforgeSignIn" in page and "tallyforgeDevice" not in page, "nobody is signed in")
            email, password = CREW
            dock.fill("tallyforgeEmail", email)
            dock.fill("tallyforgePassword", "correct horse")
            dock.click("tallyforgeSignInButton")
            dock.wait_for_text("tallyforgeSignInMessage", WRONG_PASSWORD)
            dock.wait_for("tallyforgeSignInButton", enabled=True)
            dock.fill("tallyforgePassword", password)
            dock.key("Return")
            dock.wait_for_text("tallyforgeSignedInAs", f"Signed in as <b>{email}</b>")
            dock.wait_until_gone("tallyforgeSignIn")
            dock.wait_for("tallyforgeDevice", currentText="Main gym (TF-1001)")
            dock.wait_for_text("tallyforgeStatus", status(CLOUD))
            sim.set("TF-1001", {"home_score": 5, "away_score": 7, "period": 2, "clock": "3:21"})
            dock.wait_for_text("tallyforgeScore", "5 – 7   ·   2   ·   3:21")

            dock.click("tallyforgeSignOut")
            dock.wait_until_gone("tallyforgeSignedIn")
            check(dock.wait_for("tallyforgePassword")["text"] == "", "the password is forgotten")
            dock.fill("tallyforgeEmail", COACH)
            dock.fill("tallyforgePassword", SECRET)
            dock.key("Return")
            dock.wait_for("tallyforgeCode", focus=True)
            for code, answer in (("111111", WRONG_CODE), (CODE, None)):
                dock.type(code)
                dock.key("Return")
                if answer:
                    dock.wait_for_text("tallyforgeSignInMessage", answer)
            dock.wait_for_text("tallyforgeSignedInAs", f"Signed in as <b>{COACH}</b>")
            check(sim.state()["portal"]["by_path"]["/auth/login"] == 3, "one challenge for both codes")
            dock.click("tallyforgeSignOut")
            dock.wait_for("tallyforgeSignIn")
            check("tallyforgeCode" not in dock.page(), "the next sign-in begins with the password")


def dock_choice(stage):
    """One of two scoreboards, over the cloud and over the local network."""
    with stage.venue("TF-1001=Main gym", "TF-1002=Pool@127.0.0.2") as sim:
        home = stage.home({"lan": {"TF-1002": sim.lan_entry("TF-1002")}})
        with opened(stage, home) as (obs, dock):
            dock.wait_for_text("tallyforgeStatus", status("Pick a scoreboard above.", YELLOW))
            dock.pick("tallyforgeDevice", "Main gym (TF-1001)")   # which stands there already
            dock.wait_for_text("tallyforgeStatus", status("Live from TF-1001"))
            check("tallyforgeUseLan" not in dock.page(), "the other route is offered where it exists")
            dock.pick("tallyforgeDevice", "Pool (TF-1002)")
            dock.wait_for_text("tallyforgeStatus", status("Live from TF-1002"))
            check(home.settings()["selected_device"] == "TF-1002", "the choice is stored")
            for route, is_lan, shown in (("lan", True, "Live from Pool over your network"),
                                         ("cloud", False, "Live from TF-1002")):
                dock.wait_for("tallyforgeUseLan", checked=not is_lan)
                dock.toggle("tallyforgeUseLan")
                dock.wait_for_text("tallyforgeStatus", status(shown))
                check(home.settings()["routes"] == {"TF-1002": route}, "the route is stored")
                sim.set("TF-1002", {"home_score": 30 + is_lan, "away_score": 2})
                dock.wait_for("tallyforgeScore", text=f"{30 + is_lan} – 2   ·   1   ·   8:00")
            dock.key("Tab", "shift+Tab", "shift+Tab")
            dock.wait_for("tallyforgeDevice", focus=True)
            dock.key("Up")
            obs.wait_for_status("Live from TF-1001")
            sim.fault("device", "offline", device="TF-1001")
            dock.wait_for_text("tallyforgeStatus",
                               status("TF-1001 is offline. Showing its last scores.", YELLOW))


def dock_scene(stage):
    """Two texts and a graphic come to stand in the scene, each with OBS's own window about it."""
    names = [("tallyforgeAddText", "Tallyforge Score"), ("tallyforgeAddText", "Tallyforge Score 2"),
             ("tallyforgeAddGraphic", "Tallyforge Graphics")]
    with stage.venue() as sim:
        with opened(stage, stage.home()) as (obs, dock):
            obs.wait_for_status(CLOUD)
            sim.set("TF-1001", {"home_score": 41})
            for button, name in names:
                title = f"Properties for '{name}'"
                dock.click(button)
                wait_until(lambda: dock.window(title), what=title)
                dock.press(title, "OK")
                wait_until(lambda: not dock.window(title), what="its end")
            items = obs.request("GetSceneItemList", sceneName="Scene")["sceneItems"]
            found = [(item["sourceName"], item["inputKind"]) for item in items]
            check(found == [("Tallyforge Score", "tallyforge_text"),
                            ("Tallyforge Score 2", "tallyforge_text"),
                            ("Tallyforge Graphics", "tallyforge_graphics")], f"the scene has {found}")
            before = obs.picture("Tallyforge Score")
            sim.set("TF-1001", {"home_score": 42})
            wait_until(lambda: not obs.picture("Tallyforge Score").same_as(before),
                       what="the new text to show the score")


def dock_server(stage):
    def address(port, count):
        return (f"Connect to 127.0.0.1:{port} and read one JSON line per update. "
                f"{count} connected.")
    with stage.venue():
        home = stage.home()
        with opened(stage, home, warnings=[TAKEN]) as (_, dock):
            dock.wait_for_text("tallyforgeServerStatus", "Off.")
            with socket.create_server(("127.0.0.1", PORT)):   # somebody else's
                dock.toggle("tallyforgeServerEnabled")
                dock.wait_for_text("tallyforgeServerStatus", f"Could not start - port {PORT} may be "
                                   "in use. Try another port.")
            dock.fill("tallyforgeServerPort", str(OTHER_PORT))
            dock.key("Tab")
            dock.wait_for_text("tallyforgeServerStatus", address(OTHER_PORT, 0))
            with socket.create_connection(("127.0.0.1", OTHER_PORT)):
                dock.wait_for_text("tallyforgeServerStatus", address(OTHER_PORT, 1))
            dock.wait_for_text("tallyforgeServerStatus", address(OTHER_PORT, 0))
            dock.toggle("tallyforgeServerAllowNetwork")
            dock.wait_for_text("tallyforgeServerStatus",
                               address(OTHER_PORT, 0).replace("127.0.0.1", "this computer's address"))
            stored = {key: value for key, value in home.settings().items() if "server" in key}
            check(stored == {"server_enabled": True, "server_port": OTHER_PORT,
                             "server_allow_network": True}, f"stored: {stored}")
            dock.toggle("tallyforgeServerEnabled")
            dock.wait_for_text("tallyforgeServerStatus", "Off.")


def tab_stops(dock):
    """The controls as they stand on the page, and as the Tab key reaches them from the first on."""
    page = sorted(dock.page().items(), key=lambda item: item[1]["rect"][1::-1])
    wanted = [name for name, widget in page if name.startswith("tallyforge") and widget["enabled"]
              and widget["focusPolicy"] in ("TabFocus", "StrongFocus", "WheelFocus")]
    reached = []
    while reached.count(reached[-1:] and reached[0]) < 2:
        dock.key("Tab")
        now = dock.focus()
        if now and [now] != reached[-1:]:   # within a label it goes from link to link
            reached.append(now)
    reached.pop()
    ours = [name for name in reached if name.startswith("tallyforge")]
    start = ours.index(wanted[0])
    return wanted, ours[start:] + ours[:start]


def dock_keyboard(stage):
    """All that can be used is reached by Tab, in the order of the page; the mouse only begins."""
    with stage.venue() as sim:
        home = signed_out(stage)
        home.write_settings({"lan": {"TF-1001": sim.lan_entry("TF-1001")}})
        with opened(stage, home) as (_, dock):
            dock.click("tallyforgeEmail")
            wanted, reached = tab_stops(dock)
            check(reached == wanted and len(wanted) > 10, f"signed out: {reached}, not {wanted}")
            dock.click("tallyforgeEmail")
            for word, end in zip(CREW, ("Tab", "Return")):
                dock.type(word)
                dock.key(end)
            dock.wait_for("tallyforgeUseLan")
            wanted, reached = tab_stops(dock)
            check(reached == wanted and len(wanted) > 9, f"signed in: {reached}, not {wanted}")


def dock_narrow(stage):
    """At 250 pixels nothing is cut off or out of reach, however long the texts are."""
    statuses = {"en-US": CLOUD, "de-DE": "Live von TF-1001"}
    with stage.venue("TF-1001=The big hall of the Westside community sports centre") as sim:
        for language, live in statuses.items():
            home = signed_out(stage, language=language)
            home.write_settings({"lan": {"TF-1001": sim.lan_entry("TF-1001")}})
            with opened(stage, home) as (_, dock):
                dock.place(1100, NARROW, 860)
                check_fits(dock)
                dock.fill("tallyforgeEmail", CREW[0])
                dock.fill("tallyforgePassword", CREW[1])
                dock.key("Return")
                dock.wait_for_text("tallyforgeStatus", status(live))
                dock.toggle("tallyforgeServerEnabled")
                check_fits(dock)


def check_fits(dock):
    page = dock.page(measured=True)
    left, _, width, _ = page["qt_scrollarea_viewport"]["rect"]
    for name, widget in page.items():
        x, _, own_width, own_height = widget["rect"]
        if name.startswith("tallyforge") and name != DOCK:
            least_width, least_height = widget["least"][2:]
            check(left <= x and x + own_width <= left + width, f"{name} is out of reach: {widget}")
            if widget["class"] != "QSpinBox":   # a theme makes it smaller than it would be
                check(least_width <= own_width and least_height <= own_height, f"{name} is cut: {widget}")
