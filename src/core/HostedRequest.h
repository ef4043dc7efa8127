// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class QByteArray;

namespace tallyforge {

/// What a program asks of the hosted server.
struct HostedRequest
{
    QString op;       ///< may be empty
    QJsonObject body; ///< the whole object of a request in JSON; empty for a bare word
};

/// Reads a line without white space around it: an object of JSON with the key "op", or a bare word.
/// Nothing for a line that begins like an object and isn't one.
[[nodiscard]] std::optional<HostedRequest> parseHostedRequest(const QByteArray &line);

} // namespace tallyforge
