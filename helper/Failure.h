// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::helper {

/// Why something didn't work: a machine word, empty when it did work, and a sentence for the user.
struct Failure
{
    QString code;
    QString message;

    [[nodiscard]] bool happened() const { return !code.isEmpty(); }
};

} // namespace tallyforge::helper
