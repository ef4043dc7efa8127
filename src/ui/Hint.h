// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QLabel>
#include <QString>

namespace tallyforge {

/// A label for running text of any origin: wrapped, shown as it is, and never in the way of a
/// narrow dock, however long its words are.
[[nodiscard]] QLabel *wrappedLabel(const QString &text = {});
/// The same for secondary text: small, in a quiet colour, and selectable.
[[nodiscard]] QLabel *hint(const QString &text = {});
/// Makes a label the one that stands out: large, bold and selectable.
void makeProminent(QLabel *label);

/// The page's rules for those labels with a base size in points. OBS's themes set the size of every
/// widget, and only a style sheet nearer to the label goes before them.
[[nodiscard]] QString textSizeRules(qreal pointSize);

/// The colours of a message: an error's red, or that of a hint.
[[nodiscard]] QString errorStyle();
[[nodiscard]] QString hintStyle();
/// Sets a style sheet unless it is set already, for setting it costs a polish.
void restyle(QWidget *widget, const QString &styleSheet);

} // namespace tallyforge
