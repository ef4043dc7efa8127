// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/RpcClient.h"

#include "device/RpcTransport.h"

#include <QJsonDocument>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int maxBusyRetries = 3;
constexpr std::chrono::milliseconds busyRetry{250}; // before a device that is busy is asked again

RpcResult failure(const QString &code, const QString &message)
{
    return {false, {}, code, message};
}

} // namespace

RpcClient::RpcClient(RpcTransport *transport, QObject *parent)
    : QObject(parent)
    , m_transport(transport)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RpcClient::onTimeout);
    connect(m_transport, &RpcTransport::message, this, &RpcClient::onMessage);
    connect(m_transport, &RpcTransport::sendFailed, this, &RpcClient::onSendFailed);
}

void RpcClient::call(const QString &method, const QJsonObject &params, const Callback &callback,
                     int timeoutMs)
{
    m_queue.push_back({method, params, callback, timeoutMs, 0});
    pump();
}

int RpcClient::pending() const
{
    return static_cast<int>(m_queue.size()) + (m_inFlight ? 1 : 0);
}

void RpcClient::pump()
{
    const QPointer<RpcClient> self = this;
    while (self && !m_inFlight && !m_queue.empty()) {
        Job job = std::move(m_queue.front());
        m_queue.pop_front();
        if (m_transport->isOpen()) {
            m_current = std::move(job);
            sendCurrent();
            return;
        }
        if (job.callback) {
            job.callback(failure(u"disconnected"_s, tr("Not connected to a device")));
        }
    }
}

void RpcClient::sendCurrent()
{
    m_inFlight = true;
    m_currentId = m_nextId;
    m_nextId = m_nextId == std::numeric_limits<qint32>::max() ? 1 : m_nextId + 1;
    const QJsonObject request{
        {u"id"_s, m_currentId}, {u"method"_s, m_current.method}, {u"params"_s, m_current.params}};
    // Before sending, because a carrier may report its failure from inside send().
    m_timer.start(m_current.timeoutMs);
    m_transport->send(QJsonDocument(request).toJson(QJsonDocument::Compact));
}

// Calls out with the client already idle, so that the callback finds it ready for anything.
void RpcClient::finish(const RpcResult &result)
{
    m_timer.stop();
    m_inFlight = false;
    const Job done = std::exchange(m_current, {});
    const QPointer<RpcClient> self = this;
    if (done.callback) {
        done.callback(result);
    }
    if (self) {
        pump();
    }
}

void RpcClient::onMessage(const QByteArray &json)
{
    if (!m_inFlight) {
        return;
    }
    const QJsonDocument document = QJsonDocument::fromJson(json);
    // Another id is that of a call that ran out of time before.
    if (!document.isObject() || document["id"_L1].toInt(-1) != m_currentId) {
        return;
    }
    const RpcResult result = readReply(document.object());
    if (!result.ok && result.errorCode == "busy"_L1 && m_current.busyRetries < maxBusyRetries) {
        retryCurrent();
    } else {
        finish(result);
    }
}

RpcResult RpcClient::readReply(const QJsonObject &reply) const
{
    if (reply.value("ok"_L1).toBool()) {
        const QJsonValue value = reply.value("result"_L1);
        if (value.isObject() || value.isUndefined()) {
            return {true, value.toObject(), {}, {}};
        }
        return {true, QJsonObject{{u"value"_s, value}}, {}, {}};
    }
    const QJsonObject error = reply.value("error"_L1).toObject();
    return failure(
        error.value("code"_L1).toString(u"device_error"_s),
        error.value("message"_L1).toString(tr("The device rejected '%1'").arg(m_current.method)));
}

void RpcClient::retryCurrent()
{
    m_timer.stop();
    m_inFlight = false;
    m_queue.push_front(std::exchange(m_current, {}));
    ++m_queue.front().busyRetries;
    QTimer::singleShot(busyRetry, this, &RpcClient::pump);
}

void RpcClient::onTimeout()
{
    if (m_inFlight) {
        finish(failure(u"timeout"_s,
                       tr("The device did not answer '%1' in time").arg(m_current.method)));
    }
}

void RpcClient::onSendFailed(const QString &code, const QString &message)
{
    if (m_inFlight) {
        finish(failure(code, message));
    }
}

void RpcClient::abortAll(const QString &code, const QString &message)
{
    const RpcResult result = failure(code, message);
    // Kept where an abort out of a callback finds them: an owner that is being destroyed fails all
    // calls before it goes.
    std::move(m_queue.begin(), m_queue.end(), std::back_inserter(m_aborted));
    m_queue.clear();
    const QPointer<RpcClient> self = this;
    if (m_inFlight) {
        finish(result);
    }
    while (self && !m_aborted.empty()) {
        const Job job = std::move(m_aborted.front());
        m_aborted.pop_front();
        if (job.callback) {
            job.callback(result);
        }
    }
}

} // namespace tallyforge
