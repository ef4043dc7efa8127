// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

class QFont;
class QString;

namespace tallyforge {

/// The text with line breaks where it has to be wrapped for a width in pixels; a longer word stays
/// whole.
[[nodiscard]] QString wrapText(const QString &text, const QFont &font, int width);
/// The width of the longest word, below which wrapText() can't go.
[[nodiscard]] int widestWord(const QString &text, const QFont &font);

} // namespace tallyforge
