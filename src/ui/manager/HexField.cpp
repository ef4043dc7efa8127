// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/HexField.h"

namespace tallyforge {

namespace {

constexpr int base = 16;

} // namespace

HexField::HexField(const QString &name, const QString &placeholder, int unchanged, int digits,
                   QWidget *parent)
    : TextField(name, placeholder, parent)
    , m_unchanged(unchanged)
    , m_digits(digits)
{
    connect(this, &QLineEdit::textChanged, this, &HexField::numberChanged);
}

int HexField::number() const
{
    const QString typed = text().trimmed();
    return typed.isEmpty() ? m_unchanged : typed.toInt(nullptr, base);
}

void HexField::setNumber(int number)
{
    const QString digits =
        number == m_unchanged
            ? QString()
            : QString::number(number, base).toUpper().rightJustified(m_digits, u'0');
    if (digits != text()) { // else the cursor stays
        setText(digits);
    }
}

} // namespace tallyforge
