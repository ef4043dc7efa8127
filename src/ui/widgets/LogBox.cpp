// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/LogBox.h"

#include <QTextCursor>

#include <algorithm>

namespace tallyforge {

namespace {

constexpr qsizetype pieceLength = 4000; // characters

} // namespace

LogBox::LogBox(const QString &name, int height, QWidget *parent)
    : ReadOnlyBox(name, height, parent)
    , m_filling([this] { return addPiece(); })
{
}

void LogBox::showLog(const QString &text)
{
    m_text = text;
    m_shown = 0;
    clear();
    m_filling.go();
}

bool LogBox::addPiece()
{
    const QStringView rest = QStringView(m_text).sliced(m_shown);
    qsizetype length = std::min(pieceLength, rest.size());
    if (length < rest.size() && (rest[length] == u'\n' || rest[length].isLowSurrogate())) {
        ++length; // belongs to what stands before it
    }
    const QStringView piece = rest.left(length);
    const bool isLast = length == rest.size();
    const qsizetype lineEnd = isLast ? -1 : piece.lastIndexOf(u'\n');
    const QStringView lines = piece.left(lineEnd < 0 ? piece.size() : lineEnd + 1);
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(lines.toString());
    m_shown += lines.size();
    if (!isLast && lineEnd < 0) {
        end.insertBlock();
    }
    return !isLast;
}

} // namespace tallyforge
