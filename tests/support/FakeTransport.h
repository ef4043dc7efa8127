// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/RpcTransport.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <functional>

namespace tallyforge::test {

/// A carrier that keeps each request; the test answers it, or lets it fail.
class FakeTransport final : public RpcTransport
{
public:
    [[nodiscard]] bool isOpen() const override { return open; }
    void send(const QByteArray &json) override
    {
        const QJsonObject request = QJsonDocument::fromJson(json).object();
        sent.append(request);
        if (failsAtOnce) {
            Q_EMIT sendFailed(QStringLiteral("write_failed"), QStringLiteral("No."));
        } else if (onSend) {
            onSend(request);
        }
    }
    /// Answers a request (by default the last one) with "ok" and the given members.
    void answer(QJsonObject reply, qsizetype request = -1)
    {
        const QJsonObject &asked = request < 0 ? sent.constLast() : sent.at(request);
        reply.insert(QStringLiteral("id"), asked.value(QLatin1StringView("id")));
        Q_EMIT message(QJsonDocument(reply).toJson(QJsonDocument::Compact));
    }

    QList<QJsonObject> sent;
    std::function<void(const QJsonObject &)> onSend;
    bool open = true;
    bool failsAtOnce = false;
};

} // namespace tallyforge::test
