// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleTransport.h"

#include "device/ble/BleBridge.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr int leastPayload = 20; // of any connection
constexpr int lastMessageId = 255;
constexpr std::chrono::milliseconds writeLimit{15000}; // for one write

} // namespace

BleTransport::BleTransport(BleBridge *bridge, QObject *parent)
    : RpcTransport(parent)
    , m_bridge(bridge)
    , m_writePayload(leastPayload)
{
    m_assembler.onTruncated = [this](const QString &message) {
        Q_EMIT sendFailed(u"truncated"_s, message);
    };
}

void BleTransport::start(int writePayload)
{
    stop();
    m_open = true;
    m_writePayload = writePayload;
}

void BleTransport::stop()
{
    m_generation.next();
    m_open = false;
    m_writePayload = leastPayload;
    m_assembler.reset();
    m_writeQueue.clear();
    m_writing = false;
}

void BleTransport::deliver(const QByteArray &bytes)
{
    const QList<QByteArray> messages = m_assembler.feed(bytes);
    for (const QByteArray &json : messages) {
        Q_EMIT message(json);
    }
}

void BleTransport::send(const QByteArray &json)
{
    if (!m_open) {
        Q_EMIT sendFailed(u"disconnected"_s, tr("Not connected to a device"));
        return;
    }
    m_messageId = m_messageId % lastMessageId + 1;
    const QList<QByteArray> fragments = bleEncodeRequest(json, m_writePayload, m_messageId);
    if (fragments.isEmpty()) {
        Q_EMIT sendFailed(u"request_too_large"_s, tr("That request is too large for the device"));
        return;
    }
    m_writeQueue.append(fragments);
    pumpWrites();
}

void BleTransport::pumpWrites()
{
    if (m_writing || m_writeQueue.isEmpty()) {
        return;
    }
    if (!m_bridge->isReady()) {
        // The helper has stopped, or the plug-in is ending. A write must not start it.
        m_writeQueue.clear();
        const BleReply reply = BleBridge::stopped();
        Q_EMIT sendFailed(reply.code, reply.message);
        return;
    }
    m_writing = true;
    const QString bytes = QString::fromLatin1(m_writeQueue.takeFirst().toBase64());
    m_bridge->request(u"write"_s, {{u"b64"_s, bytes}},
                      m_generation.guard([this](const BleReply &reply) { onWritten(reply); }),
                      writeLimit);
}

void BleTransport::onWritten(const BleReply &reply)
{
    m_writing = false;
    if (reply.ok) {
        pumpWrites();
        return;
    }
    m_writeQueue.clear();
    if (reply.code == "not_paired"_L1) {
        Q_EMIT sendFailed(
            reply.code,
            tr("This computer is not paired with the device yet. Pair it once with the 6-digit "
               "passkey from the device's label or your Tallyforge account (macOS asks "
               "automatically; on Windows pair it in Bluetooth settings first), then connect "
               "again."));
    } else {
        Q_EMIT sendFailed(reply.code, reply.message);
    }
}

} // namespace tallyforge
