// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QJsonObject;
class QJsonValue;

namespace tallyforge {

/// The text that a JSON value is shown as: a whole number without a fraction, any other number with
/// six significant digits, "true" or "false", a string as it is; everything else gives an empty
/// text.
[[nodiscard]] QString jsonToText(const QJsonValue &value);

/// An object as one line, with its end.
[[nodiscard]] QByteArray jsonLine(const QJsonObject &object);

/// The bytes that a JSON text holds in base64, nothing when it is anything else.
[[nodiscard]] std::optional<QByteArray> base64Bytes(const QJsonValue &value);

/// Appends a text to a document of JSON, with its quotes.
void appendJsonString(QByteArray &json, const QString &text);

} // namespace tallyforge
