// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/MessageLine.h"

#include "ui/widgets/Announcement.h"

namespace tallyforge {

MessageLine::MessageLine(QWidget *parent)
    : ThemedLabel(parent)
{
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    hide();
}

void MessageLine::tell(const QString &text, bool isError)
{
    const bool isNews = text != this->text();
    setError(isError);
    showText(text);
    if (isNews) {
        announce(this, text, isError);
    }
}

} // namespace tallyforge
