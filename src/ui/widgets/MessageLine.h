// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/ThemedLabel.h"

namespace tallyforge {

/// The line in which a page or panel tells how its work goes, and what has failed. It takes no room
/// while it is empty, and a screen reader says what it comes to show.
class MessageLine final : public ThemedLabel
{
    Q_OBJECT

public:
    explicit MessageLine(QWidget *parent);

    /// An error is shown in red. An empty text clears the line.
    void tell(const QString &text, bool isError);
};

} // namespace tallyforge
