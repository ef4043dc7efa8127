// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/JsonText.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

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

bool needsNoEscape(QChar c)
{
    return c >= u' ' && c <= u'~' && c != u'"' && c != u'\\';
}

} // namespace

QString jsonToText(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Double:
        return numberToText(value.toDouble());
    case QJsonValue::Bool:
        return value.toBool() ? u"true"_s : u"false"_s;
    case QJsonValue::String:
        return value.toString();
    default:
        return {};
    }
}

QByteArray jsonLine(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<QByteArray> base64Bytes(const QJsonValue &value)
{
    auto bytes = QByteArray::fromBase64Encoding(value.toString().toLatin1(),
                                                QByteArray::Base64Encoding |
                                                    QByteArray::AbortOnBase64DecodingErrors);
    if (!value.isString() || !bytes) {
        return std::nullopt;
    }
    return std::move(bytes.decoded);
}

void appendJsonString(QByteArray &json, const QString &text)
{
    const qsizetype begin = json.size();
    json.resize(begin + text.size() + 2);
    char *out = json.data() + begin;
    *out++ = '"';
    for (const QChar c : text) {
        if (!needsNoEscape(c)) {
            const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
            json.resize(begin);
            json.append(array.sliced(1, array.size() - 2));
            return;
        }
        *out++ = c.toLatin1();
    }
    *out = '"';
}

} // namespace tallyforge
