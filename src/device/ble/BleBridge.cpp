// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleBridge.h"

#include "common/JsonText.h"
#include "device/ble/BleHelperLines.h"
#include "device/ble/BleHelperSocket.h"
#include "platform/BluetoothHelper.h"

#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

// So that no crowd of strangers takes up memory.
constexpr qsizetype maxStrangers = 16;

BleReply failure(const QString &code, const QString &message)
{
    return {false, {}, code, message};
}

BleReply unavailable(const QString &message)
{
    return failure(u"bluetooth_unavailable"_s, message);
}

QByteArray newToken()
{
    QRandomGenerator64 *const random = QRandomGenerator64::system();
    const QByteArray first = QByteArray::number(random->generate(), 16);
    return first + QByteArray::number(random->generate(), 16);
}

} // namespace

BleBridge *BleBridge::instance()
{
    // Not a static object: those end after QCoreApplication, which a server must not.
    static BleBridge *const bridge = new BleBridge; // NOLINT(misc-const-correctness)
    return bridge;
}

BleBridge::BleBridge(QObject *parent)
    : BleBridge(Timing{}, parent)
{
}

BleBridge::BleBridge(const Timing &timing, QObject *parent)
    : QObject(parent)
    , m_timing(timing)
{
    m_launchTimer.setSingleShot(true);
    m_launchTimer.setInterval(m_timing.launch);
    connect(&m_launchTimer, &QTimer::timeout, this, &BleBridge::onLaunchFailed);
    connect(&m_server, &QTcpServer::newConnection, this, &BleBridge::onNewConnection);
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
    if (!m_server.isListening() && !m_server.listen(QHostAddress::LocalHost)) {
        settleWaiters(false, tr("Could not open a local port for the Bluetooth helper."));
        return;
    }
    m_token = newToken();
    retireProcess();
    m_process = new QProcess(this);
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            onLaunchFailed();
        }
    });
    m_launchTimer.start();
    platform::startBluetoothHelper(m_process, m_helperPath, m_server.serverPort(), m_token);
}

// Destroying a process object waits for its process, so that has to end first.
void BleBridge::retireProcess()
{
    QProcess *const process = std::exchange(m_process, nullptr);
    if (process == nullptr) {
        return;
    }
    process->disconnect(this);
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
    } else {
        // One that has only begun to start may fail to, and then never finishes.
        connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState now) {
            if (now == QProcess::NotRunning) {
                process->deleteLater();
            }
        });
        process->kill();
    }
}

void BleBridge::onLaunchFailed()
{
    m_launchTimer.stop();
    QProcess *const process = m_process;
    settleWaiters(false, tr("The Bluetooth helper did not start. Bluetooth setup is unavailable "
                            "on this system."));
    if (process != nullptr && process == m_process) { // else a waiter has started it anew
        process->kill();
    }
}

void BleBridge::settleWaiters(bool ok, const QString &message)
{
    const QList<ReadyCallback> waiters = std::exchange(m_waiters, {});
    for (const ReadyCallback &waiter : waiters) {
        if (m_shutDown) {
            return;
        }
        waiter(ok, message);
    }
}

void BleBridge::onNewConnection()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
        if (m_token.isEmpty()) { // nobody is expected
            socket->abort();
            socket->deleteLater();
            continue;
        }
        if (m_strangers.size() == maxStrangers) {
            m_strangers.takeFirst()->close(); // the helper doesn't let one wait that long
        }
        auto *const stranger = new BleHelperSocket(socket, m_timing.hello, this);
        m_strangers.append(stranger);
        connect(stranger, &BleHelperSocket::received, this,
                [this, stranger](const QJsonObject &object) { onObject(stranger, object); });
        connect(stranger, &BleHelperSocket::ended, this,
                [this, stranger] { onSocketEnded(stranger); });
    }
}

void BleBridge::onObject(BleHelperSocket *from, const QJsonObject &object)
{
    if (from != m_helper) {
        greet(from, object);
    } else if (object.contains("ev"_L1)) {
        handleEvent(object);
    } else {
        handleReply(object);
    }
}

void BleBridge::greet(BleHelperSocket *stranger, const QJsonObject &hello)
{
    m_strangers.removeOne(stranger);
    if (!bleProvesToken(hello, m_token)) {
        stranger->close();
        return;
    }
    m_helper = stranger;
    m_helper->trust();
    m_token.clear();
    const QList<BleHelperSocket *> others = std::exchange(m_strangers, {});
    for (BleHelperSocket *const other : others) {
        other->close();
    }
    m_launchTimer.stop();
    settleWaiters(true, {});
}

void BleBridge::onSocketEnded(BleHelperSocket *socket)
{
    m_strangers.removeOne(socket);
    if (socket != m_helper) {
        return;
    }
    m_helper = nullptr;
    m_started = false;
    failAll(stopped());
    if (!m_shutDown) {
        Q_EMIT helperStopped(u"stopped"_s);
    }
}

void BleBridge::handleReply(const QJsonObject &line)
{
    finish(line.value("reqId"_L1).toInt(-1), bleReply(line));
}

void BleBridge::handleEvent(const QJsonObject &line)
{
    const QString event = line.value("ev"_L1).toString();
    if (event == "data"_L1) {
        if (const auto bytes = base64Bytes(line.value("b64"_L1))) {
            Q_EMIT dataReceived(*bytes);
        }
    } else if (event == "disconnected"_L1) {
        Q_EMIT disconnected(line.value("reason"_L1).toString());
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
    const int id = m_nextId++;
    m_pending.insert(id, {callback, startTimer(timeout)});
    QJsonObject line = params;
    line.insert(u"reqId"_s, id);
    line.insert(u"op"_s, op);
    m_helper->send(line);
}

void BleBridge::timerEvent(QTimerEvent *event)
{
    const auto late = std::ranges::find_if(
        m_pending, [event](const Pending &pending) { return pending.timer == event->timerId(); });
    if (late != m_pending.end()) {
        finish(late.key(), failure(u"timeout"_s, tr("Bluetooth did not respond in time.")));
    }
}

void BleBridge::finish(int id, const BleReply &reply)
{
    if (!m_pending.contains(id)) {
        return; // it came too late, or twice
    }
    const Pending pending = m_pending.take(id);
    killTimer(pending.timer);
    if (pending.callback) {
        pending.callback(reply);
    }
}

void BleBridge::failAll(const BleReply &reply)
{
    const QMap<int, Pending> pending = std::exchange(m_pending, {});
    for (const Pending &entry : pending) {
        killTimer(entry.timer);
    }
    for (const Pending &entry : pending) {
        if (m_shutDown) {
            return;
        }
        if (entry.callback) {
            entry.callback(reply);
        }
    }
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
        m_timing.start);
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
                duration + m_timing.scanExtra);
    });
}

void BleBridge::shutdown()
{
    m_shutDown = true;
    m_waiters.clear();
    failAll({}); // calls nobody back any more
    m_launchTimer.stop();
    m_server.close();
    m_token.clear();
    const QList<BleHelperSocket *> strangers = std::exchange(m_strangers, {});
    for (BleHelperSocket *const stranger : strangers) {
        stranger->close();
    }
    if (BleHelperSocket *const helper = std::exchange(m_helper, nullptr)) {
        helper->send({{u"op"_s, u"quit"_s}, {u"reqId"_s, 0}});
        helper->close();
    } else {
        retireProcess(); // one that has not come yet
    }
    m_started = false;
}

} // namespace tallyforge
