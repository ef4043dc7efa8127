// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QPlainTextEdit>

namespace tallyforge {

/// Several lines that the user reads, selects and copies. Tab leads out of it.
class ReadOnlyBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// name is what a screen reader calls it; height is the least one, in pixels.
    ReadOnlyBox(const QString &name, int height, QWidget *parent);

    /// No higher than it must be: an area that scrolls would take the usual height for needed.
    [[nodiscard]] QSize sizeHint() const override;
    /// Replaces only the part that differs, so that the place in view stays, and so does what the
    /// user has selected outside that part.
    void showText(const QString &text);
};

} // namespace tallyforge
