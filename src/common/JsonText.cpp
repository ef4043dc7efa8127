// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/JsonText.h"

#include <QJsonValue>

#include <cmath>

namespace tallyforge {

namespace {

QString numberToText(double number)
{
    // 2^63: a double at or beyond it has no 64-bit integer, and converting it would be undefined.
    constexpr double integerLimit = 9223372036854775808.0;
    if (number >= -integerLimit && number < integerLimit && std::trunc(number) == number) {
        return QString::number(static_cast<qint64>(number));
    }
    return QString::number(number, 'g', 6);
}

} // namespace

QString jsonToText(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Double:
        return numberToText(value.toDouble());
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::String:
        return value.toString();
    default:
        return {};
    }
}

} // namespace tallyforge
