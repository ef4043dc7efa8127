// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ReadOnlyBox.h"

#include <QScrollBar>

namespace tallyforge {

ReadOnlyBox::ReadOnlyBox(const QString &name, int height, QWidget *parent)
    : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTabChangesFocus(true);
    setLineWrapMode(WidgetWidth);
    setMinimumHeight(height);
    setAccessibleName(name);
}

void ReadOnlyBox::showText(const QString &text)
{
    if (text == toPlainText()) {
        return;
    }
    const int place = verticalScrollBar()->value();
    setPlainText(text);
    verticalScrollBar()->setValue(place);
}

} // namespace tallyforge
