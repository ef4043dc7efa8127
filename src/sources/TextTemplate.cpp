// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "sources/TextTemplate.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tallyforge {

QString expandTemplate(const QString &text,
                       const std::function<QString(const QString &name)> &valueOf)
{
    static const QRegularExpression placeholder(u"\\{([A-Za-z0-9_]+)\\}"_s);
    QString result;
    qsizetype position = 0;
    for (const QRegularExpressionMatch &match : placeholder.globalMatch(text)) {
        result += QStringView(text).sliced(position, match.capturedStart() - position);
        result += valueOf(match.captured(1));
        position = match.capturedEnd();
    }
    result += QStringView(text).sliced(position);
    return result;
}

} // namespace tallyforge
