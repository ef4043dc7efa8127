// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QTest>

namespace tallyforge::test {

/// The simulator as a process of its own, on ports of its own, with the game under our control.
class SimProcess
{
public:
    explicit SimProcess(const QStringList &options)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral("python3"),
                        QStringList{QStringLiteral(TALLYFORGE_SIM), QStringLiteral("--manual"),
                                    QStringLiteral("--portal-port=0"), QStringLiteral("--feed-port=0"),
                                    QStringLiteral("--control-port=0")} +
                            options);
        static_cast<void>(QTest::qWaitFor([this] { return m_process.canReadLine(); }, 20000));
        ready = QJsonDocument::fromJson(m_process.readLine()).object();
    }
    ~SimProcess()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    SimProcess(const SimProcess &) = delete;
    SimProcess &operator=(const SimProcess &) = delete;

    /// A control request: with a body it is a POST. The event loop runs meanwhile.
    QJsonObject call(const QString &path, const QJsonObject &body = {})
    {
        QNetworkRequest request(QUrl(ready.value(QLatin1StringView("control")).toString() + path));
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        const std::unique_ptr<QNetworkReply> reply(
            body.isEmpty() ? m_network.get(request)
                           : m_network.post(request, QJsonDocument(body).toJson(QJsonDocument::Compact)));
        static_cast<void>(QTest::qWaitFor([&reply] { return reply->isFinished(); }));
        return QJsonDocument::fromJson(reply->readAll()).object();
    }

    QJsonObject ready; ///< the line with all addresses; empty when it didn't start

private:
    QProcess m_process;
    QNetworkAccessManager m_network;
};

} // namespace tallyforge::test
