// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleLink.h"

#include "device/ble/BleBridge.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds connectLimit{150000}; // the user may have to type a passkey
constexpr std::chrono::milliseconds disconnectLimit{8000};

} // namespace

BleLink::BleLink(const QString &id, const QString &label, QObject *parent)
    : BleLink(BleBridge::instance(), id, label, parent)
{
}

BleLink::BleLink(BleBridge *bridge, const QString &id, const QString &label, QObject *parent)
    : DeviceLink(parent)
    , m_bridge(bridge)
    , m_id(id)
    , m_label(label)
    , m_transport(bridge, nullptr)
{
    connect(bridge, &BleBridge::dataReceived, this, [this](const QByteArray &bytes) {
        if (m_connected) {
            m_transport.deliver(bytes);
        }
    });
    connect(bridge, &BleBridge::disconnected, this, [this](const QString &reason) {
        lose(reason.isEmpty() ? tr("Bluetooth link lost") : reason);
    });
    connect(bridge, &BleBridge::helperStopped, this,
            [this] { lose(tr("The Bluetooth helper stopped")); });
}

BleLink::~BleLink()
{
    close();
}

void BleLink::open()
{
    close();
    m_bridge->start(m_generation.guard([this](const BleReply &reply) {
        if (reply.ok) {
            connectDevice();
        } else {
            Q_EMIT failed(reply.code, reply.message);
        }
    }));
}

void BleLink::connectDevice()
{
    m_bridge->request(u"connect"_s, {{u"id"_s, m_id}},
                      m_generation.guard([this](const BleReply &reply) { onConnected(reply); }),
                      connectLimit);
}

void BleLink::onConnected(const BleReply &reply)
{
    if (!reply.ok) {
        Q_EMIT failed(reply.code, reply.message);
        return;
    }
    m_connected = true;
    m_transport.start(reply.result.value("writePayload"_L1).toInt(20));
    Q_EMIT opened({});
}

void BleLink::close()
{
    m_generation.next();
    if (!m_connected) {
        return;
    }
    m_connected = false;
    m_transport.stop();
    if (m_bridge->isReady()) { // a helper that has gone has disconnected
        m_bridge->request(u"disconnect"_s, {}, {}, disconnectLimit);
    }
}

void BleLink::lose(const QString &reason)
{
    if (m_connected) {
        m_connected = false;
        m_transport.stop();
        Q_EMIT closed(reason);
    }
}

} // namespace tallyforge
