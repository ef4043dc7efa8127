// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/dock/ScoreLine.h"

#include "core/LiveData.h"

#include <QLatin1StringView>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::array timeFields{"period"_L1, "quarter"_L1, "half"_L1, "inning"_L1, "clock"_L1};
constexpr qsizetype fallbackFields = 3;

QString orZero(const QString &score)
{
    return score.isEmpty() ? u"0"_s : score;
}

} // namespace

QString scoreLine(const LiveData &live)
{
    const QStringList names = live.fieldNames();
    if (names.isEmpty()) {
        return {};
    }
    QStringList pieces;
    const QString home = live.value(u"home_score"_s);
    const QString away = live.value(u"away_score"_s);
    if (!home.isEmpty() || !away.isEmpty()) {
        pieces.append(orZero(home) + u" – "_s + orZero(away));
    }
    for (const QLatin1StringView field : timeFields) {
        if (const QString value = live.value(field); !value.isEmpty()) {
            pieces.append(value);
        }
    }
    if (pieces.isEmpty()) {
        const QStringList first = names.first(qMin(names.size(), fallbackFields));
        for (const QString &name : first) {
            pieces.append(name + u": "_s + live.value(name));
        }
    }
    return pieces.join(u"   \u00b7   "_s);
}

} // namespace tallyforge
