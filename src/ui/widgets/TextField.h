// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QLineEdit>

namespace tallyforge {

/// An input for one line, which says by its placeholder alone what belongs into it. A screen reader
/// gets that as its name, because not each of them reads placeholders out.
class TextField : public QLineEdit
{
    Q_OBJECT

public:
    TextField(const QString &name, const QString &placeholder, QWidget *parent)
        : QLineEdit(parent)
    {
        setObjectName(name);
        setPlaceholderText(placeholder);
        setAccessibleName(placeholder);
    }
};

} // namespace tallyforge
