// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/ReadOnlyBox.h"

#include <QScrollBar>
#include <QTextCursor>

#include <algorithm>
#include <iterator>

namespace tallyforge {

ReadOnlyBox::ReadOnlyBox(const QString &name, int height, QWidget *parent)
    : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setLineWrapMode(WidgetWidth);
    setMinimumHeight(height);
    setAccessibleName(name);
}

QSize ReadOnlyBox::sizeHint() const
{
    return {QPlainTextEdit::sizeHint().width(), minimumHeight()};
}

void ReadOnlyBox::showText(const QString &text)
{
    const QString old = toPlainText();
    if (text == old) {
        return;
    }
    const auto begin = std::ranges::mismatch(old, text);
    const auto end = std::mismatch(old.rbegin(), std::reverse_iterator(begin.in1), text.rbegin(),
                                   std::reverse_iterator(begin.in2));
    QTextCursor change(document());
    change.setPosition(int(begin.in1 - old.begin()));
    change.setPosition(int(end.first.base() - old.begin()), QTextCursor::KeepAnchor);
    QTextCursor user = textCursor(); // moves with the text around it
    const int position = user.position();
    const int place = verticalScrollBar()->value();
    change.insertText(QString(begin.in2, end.second.base() - begin.in2));
    if (!user.hasSelection()) {
        user.setPosition(std::min(position, document()->characterCount() - 1));
        setTextCursor(user);
    }
    verticalScrollBar()->setValue(place);
}

} // namespace tallyforge
