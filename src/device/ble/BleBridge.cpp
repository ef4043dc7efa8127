// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleBridge.h"

#include "common/JsonText.h"
#include "device/ble/BleHelperLines.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds startLimit{30000}; // the user may be asked for a permission
constexpr std::chrono::milliseconds scanExtra{15000};  // beyond the scan itself

BleReply unavailable(const QString &message)
{
    return {false, {}, u"bluetooth_unavailable"_s, message};
}

} // namespace

BleBridge *BleBridge::instance()
{
    // Not a static object, because those end after QCoreApplication, which a server must not.
    static BleBridge *const bridge = new BleBridge; // NOLINT(misc-const-correctness)
    return bridge;
}

BleBridge::BleBridge(QObject *parent)
    : QObject(parent)
    , m_process(this)
    , m_listener(this)
    , m_requests(this)
{
    connect(&m_process, &BleHelperProcess::failed, this, [this] {
        settleWaiters(false, tr("The Bluetooth helper did not start. Bluetooth setup is "
                                "unavailable on this system."));
    });
    connect(&m_listener, &BleHelperListener::arrived, this, &BleBridge::onHelperArrived);
}

void BleBridge::setHelperPath(const QString &path)
{
    m_helperPath = path;
    m_shutDown = false;
}

void BleBridge::ensureHelper(const ReadyCallback &callback)
{
    if (m_shutDown) {
        return;
    }
    if (isReady()) {
        callback(true, {});
        return;
    }
    if (m_helperPath.isEmpty() || !QFileInfo::exists(m_helperPath)) {
        callback(false, tr("The Bluetooth helper is missing from this install. Reinstall the "
                           "Tallyforge plugin."));
        return;
    }
    m_waiters.append(callback);
    if (m_waiters.size() == 1) {
        launchHelper();
    }
}

void BleBridge::launchHelper()
{
    if (m_listener.expectHelper()) {
        m_process.start(m_helperPath, m_listener.port(), m_listener.token());
    } else {
        settleWaiters(false, tr("Could not open a local port for the Bluetooth helper."));
    }
}

void BleBridge::settleWaiters(bool ok, const QString &message)
{
    const auto isCurrent = m_generation.watch();
    const QList<ReadyCallback> waiters = std::exchange(m_waiters, {});
    for (const ReadyCallback &waiter : waiters) {
        waiter(ok, message);
        if (!isCurrent()) {
            return;
        }
    }
}

void BleBridge::onHelperArrived(BleHelperSocket *helper)
{
    m_process.arrived();
    m_helper = helper;
    m_helper->setParent(this);
    connect(m_helper, &BleHelperSocket::received, this, &BleBridge::onObject);
    connect(m_helper, &BleHelperSocket::ended, this, &BleBridge::onHelperEnded);
    settleWaiters(true, {});
}

void BleBridge::onHelperEnded()
{
    const auto isCurrent = m_generation.watch();
    m_helper = nullptr;
    m_started = false;
    m_requests.finishAll(stopped());
    if (isCurrent()) {
        Q_EMIT helperStopped(u"stopped"_s);
    }
}

void BleBridge::onObject(const QJsonObject &object)
{
    if (object.contains("ev"_L1)) {
        handleEvent(object);
    } else {
        m_requests.finish(object.value("reqId"_L1).toInt(-1), bleReply(object));
    }
}

void BleBridge::handleEvent(const QJsonObject &event)
{
    const QString name = event.value("ev"_L1).toString();
    if (name == "data"_L1) {
        if (const auto bytes = base64Bytes(event.value("b64"_L1))) {
            Q_EMIT dataReceived(*bytes);
        }
    } else if (name == "disconnected"_L1) {
        Q_EMIT disconnected(bleSentence(event.value("reason"_L1).toString()));
    }
}

void BleBridge::request(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
                        std::chrono::milliseconds timeout)
{
    ensureHelper([this, op, params, callback, timeout](bool ok, const QString &message) {
        if (ok && isReady()) {
            send(op, params, callback, timeout);
        } else if (callback) {
            callback(ok ? stopped() : unavailable(message));
        }
    });
}

BleReply BleBridge::stopped()
{
    return unavailable(tr("The Bluetooth helper stopped."));
}

void BleBridge::send(const QString &op, const QJsonObject &params, const ReplyCallback &callback,
                     std::chrono::milliseconds timeout)
{
    QJsonObject line = params;
    line.insert(u"reqId"_s, m_requests.add(callback, timeout));
    line.insert(u"op"_s, op);
    m_helper->send(line);
}

void BleBridge::start(const ReplyCallback &callback)
{
    if (m_started) {
        callback({true, {}, {}, {}});
        return;
    }
    request(
        u"start"_s, {},
        [this, callback](const BleReply &reply) {
            m_started = m_started || reply.ok;
            callback(reply);
        },
        startLimit);
}

void BleBridge::scan(std::chrono::milliseconds duration, const ScanCallback &callback)
{
    const auto deliver = [callback](const BleReply &reply) {
        callback(reply.ok, bleDevices(reply.result), reply.result.value("seen"_L1).toInt(),
                 reply.code, reply.message);
    };
    start([this, duration, deliver](const BleReply &reply) {
        if (!reply.ok) {
            deliver(reply);
            return;
        }
        request(u"scan"_s, {{u"ms"_s, static_cast<qint64>(duration.count())}}, deliver,
                duration + scanExtra);
    });
}

void BleBridge::shutdown()
{
    m_shutDown = true;
    m_generation.next();
    m_waiters.clear();
    m_requests.drop();
    m_listener.close();
    if (BleHelperSocket *const helper = std::exchange(m_helper, nullptr)) {
        helper->send({{u"op"_s, u"quit"_s}, {u"reqId"_s, 0}});
        helper->close();
    } else {
        m_process.end(); // the helper has not come yet
    }
    m_started = false;
}

} // namespace tallyforge
