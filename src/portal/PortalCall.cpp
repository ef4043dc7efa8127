// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "portal/PortalCall.h"

#include "portal/PortalClient.h"

#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

bool isSuccess(int status)
{
    return status >= 200 && status <= 299;
}

// A failure's body is {"detail":{"error":code}}, {"detail":sentence} or {"error":code}.
QString readFailure(const QJsonObject &data, QString *code)
{
    const QJsonValue detail = data.value("detail"_L1);
    *code = detail.toObject().value("error"_L1).toString();
    if (code->isEmpty()) {
        *code = data.value("error"_L1).toString();
    }
    return detail.toString();
}

bool ranOutOfTime(const QNetworkReply &reply)
{
    return reply.error() == QNetworkReply::OperationCanceledError ||
           reply.error() == QNetworkReply::TimeoutError;
}

PortalResult sessionEnded()
{
    PortalResult result;
    result.code = PortalResult::sessionEndedCode;
    result.message = PortalClient::friendly(401, {}, {});
    return result;
}

} // namespace

PortalCall::PortalCall(Kind kind, QNetworkReply *reply, std::chrono::milliseconds limit,
                       QObject *parent)
    : QObject(parent)
    , m_kind(kind)
    , m_reply(reply)
{
    m_reply->setReadBufferSize(maxBytes + 1);
    connect(m_reply, &QNetworkReply::readyRead, this, &PortalCall::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &PortalCall::onReplyFinished);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, m_reply, &QNetworkReply::abort);
    m_limit.start(limit);
}

PortalCall::~PortalCall()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
}

void PortalCall::endWithSession()
{
    if (std::exchange(m_isOver, true)) {
        return;
    }
    m_reply->disconnect(this);
    m_reply->abort();
    QMetaObject::invokeMethod(this, [this] { deliver(sessionEnded()); }, Qt::QueuedConnection);
}

void PortalCall::onReadyRead()
{
    if (m_reply->bytesAvailable() > maxBytes) {
        m_isTooLong = true;
        m_reply->abort();
    }
}

void PortalCall::onReplyFinished()
{
    PortalResult result;
    // A reply that ran out of time in the middle, or is too long, is no answer, even if it began
    // with a status.
    if (!m_isTooLong && !ranOutOfTime(*m_reply)) {
        result.status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }
    if (m_reply->isReadable()) { // an aborted one isn't
        result.data = QJsonDocument::fromJson(m_reply->readAll()).object();
    }
    result.ok = m_reply->error() == QNetworkReply::NoError && isSuccess(result.status);
    if (!result.ok) {
        const QString detail = readFailure(result.data, &result.code);
        result.message = PortalClient::friendly(result.status, result.code, detail);
    }
    m_isOver = true;
    deliver(result);
}

void PortalCall::deliver(const PortalResult &result)
{
    m_limit.stop();
    deleteLater();
    Q_EMIT finished(result);
}

} // namespace tallyforge
