// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

namespace tallyforge {

class App;

/// What a press on the button that lists the graphics anew has come to.
enum class ListRefresh {
    Dropped,   ///< nothing: the press was made in the course of an earlier one's wait
    AtOnce,    ///< the answer was there at once, as it is for a user who is signed out
    AfterWait, ///< events were handled meanwhile, so widgets may have come and gone
};

/// Lists the graphics and waits for the answer for up to eight seconds, because OBS shows the
/// result as soon as the button's call returns. Main thread only.
[[nodiscard]] ListRefresh refreshGraphicsList(App &app);

} // namespace tallyforge
