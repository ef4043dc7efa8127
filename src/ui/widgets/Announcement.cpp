// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/Announcement.h"

#include <QAccessible>
#include <QWidget>

namespace tallyforge {

void announce(QWidget *widget, const QString &text, bool urgent)
{
    if (text.isEmpty() || !widget->isVisible()) {
        return;
    }
    QAccessibleAnnouncementEvent event(widget, text);
    event.setPoliteness(urgent ? QAccessible::AnnouncementPoliteness::Assertive
                               : QAccessible::AnnouncementPoliteness::Polite);
    QAccessible::updateAccessibility(&event);
}

} // namespace tallyforge
