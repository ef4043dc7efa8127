// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/widgets/WrappedText.h"

#include <QFontMetrics>
#include <QString>
#include <QStringList>
#include <QTextLayout>

#include <algorithm>

namespace tallyforge {

QString wrapText(const QString &text, const QFont &font, int width)
{
    if (QFontMetrics(font).size(Qt::TextShowMnemonic, text).width() <= width) {
        return text;
    }
    QStringList lines;
    QTextLayout layout(text, font);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines.join(u'\n');
}

int widestWord(const QString &text, const QFont &font)
{
    const QFontMetrics metrics(font);
    int widest = 0;
    const QList<QStringView> words = QStringView(text).split(u' ');
    for (const QStringView word : words) {
        widest = std::max(widest, metrics.size(Qt::TextShowMnemonic, word.toString()).width());
    }
    return widest;
}

} // namespace tallyforge
