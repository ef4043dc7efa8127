// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge {

class LiveData;

/// The live data in one line of plain text: the score, the time of the game, and where there is
/// neither, the first few fields. Empty when there are no data.
[[nodiscard]] QString scoreLine(const LiveData &live);

} // namespace tallyforge
