// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QString;
class QWidget;

namespace tallyforge {

/// Has a screen reader say what a widget has come to show without the user's doing; an urgent text
/// interrupts whatever it is saying. Nothing happens for an empty text or a widget out of sight.
void announce(QWidget *widget, const QString &text, bool urgent);

} // namespace tallyforge
