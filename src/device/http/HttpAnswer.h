// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace tallyforge {

/// A device's answer to one method over HTTP, in the terms of its RPC.
struct HttpAnswer
{
    bool ok = false;
    QJsonObject result; ///< of a success
    QString code;       ///< of a failure
    QString message;    ///< of a failure, for the user

    /// Reads an answer of the device; status 0 means that none came. A body that is a JSON array
    /// is the member "value" of the result; anything else that is no object makes that null.
    [[nodiscard]] static HttpAnswer read(const QString &method, int status, const QByteArray &body);
    [[nodiscard]] static HttpAnswer failure(const QString &code, const QString &message);

    /// The reply to the request with this id as RpcClient reads it.
    [[nodiscard]] QByteArray toJson(int id) const;
};

} // namespace tallyforge
