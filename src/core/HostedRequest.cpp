// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/HostedRequest.h"

#include <QByteArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tallyforge {

std::optional<HostedRequest> parseHostedRequest(const QByteArray &line)
{
    if (!line.startsWith('{')) {
        return HostedRequest{QString::fromUtf8(line).trimmed(), {}};
    }
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject body = document.object();
    return HostedRequest{body.value("op"_L1).toString(), body};
}

} // namespace tallyforge
