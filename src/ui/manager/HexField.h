// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/widgets/TextField.h"

namespace tallyforge {

/// A number that is typed in hexadecimal digits. The one value that means "leave it as it is" is
/// blank. Text that is no such number counts as 0: the device decides what it takes.
class HexField final : public TextField
{
    Q_OBJECT
    Q_PROPERTY(int number READ number WRITE setNumber NOTIFY numberChanged USER true)

public:
    /// digits is the least number of digits shown.
    HexField(const QString &name, const QString &placeholder, int unchanged, int digits,
             QWidget *parent);

    [[nodiscard]] int number() const;
    void setNumber(int number);

Q_SIGNALS:
    void numberChanged();

private:
    const int m_unchanged;
    const int m_digits;
};

} // namespace tallyforge
