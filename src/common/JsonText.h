// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

class QByteArray;
class QJsonValue;

namespace tallyforge {

/// The text that a JSON value is shown as: a whole number without a fraction, any other number with
/// six significant digits, "true" or "false", a string as it is; everything else gives an empty
/// text.
[[nodiscard]] QString jsonToText(const QJsonValue &value);

/// Appends a text to a document of JSON, with its quotes.
void appendJsonString(QByteArray &json, const QString &text);

} // namespace tallyforge
