# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""The plug-in speaks the language that the user has set in OBS."""

from graphics import LIST, add, listed
from obs_session import wait_until


def german(stage):
    """Its own texts and those that OBS looks up for its sources."""
    with stage.venue() as sim:
        sim.fault("portal", "status", path=LIST)
        with stage.obs(stage.home(language="de-DE")) as obs:
            obs.wait_for_status("Live von TF-1001")
            add(obs, {})
            wait_until(lambda: listed(obs) == ["Keine Grafiken"], what="the German empty list")
