// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/SlicedWork.h"
#include "ui/widgets/ReadOnlyBox.h"

namespace tallyforge {

/// A box for long text of any origin, which comes into it piece by piece while the window goes on.
class LogBox final : public ReadOnlyBox
{
    Q_OBJECT

public:
    /// See ReadOnlyBox.
    LogBox(const QString &name, int height, QWidget *parent);

    /// Shows this text from its beginning. A line of more than 4,000 characters is broken, because
    /// the layout of a line takes a time that grows with its length.
    void showLog(const QString &text);

private:
    bool addPiece();

    QString m_text;
    qsizetype m_shown = 0; // characters of m_text
    SlicedWork m_filling;
};

} // namespace tallyforge
