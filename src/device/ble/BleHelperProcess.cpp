// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperProcess.h"

#include "platform/BluetoothHelper.h"

#include <QProcess>

#include <chrono>
#include <utility>

namespace tallyforge {

namespace {

constexpr std::chrono::milliseconds launchLimit{20000}; // until a helper must have proved itself

} // namespace

BleHelperProcess::BleHelperProcess(QObject *parent)
    : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(launchLimit);
    connect(&m_limit, &QTimer::timeout, this, &BleHelperProcess::fail);
}

// Deleting a process object waits for its process, so the process has to end first.
BleHelperProcess::~BleHelperProcess()
{
    if (m_process != nullptr && m_process->state() != QProcess::NotRunning) {
        m_process->disconnect(this);
        m_process->kill();
        m_process->waitForFinished();
    }
}

void BleHelperProcess::start(const QString &helperPath, quint16 port, const QByteArray &token)
{
    end();
    m_process = new QProcess(this);
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail();
        }
    });
    if (platform::bluetoothHelperIsItsProcess()) {
        connect(m_process, &QProcess::finished, this, [this] {
            if (m_limit.isActive()) {
                fail();
            }
        });
    }
    m_limit.start();
    platform::startBluetoothHelper(m_process, helperPath, port, token);
}

void BleHelperProcess::end()
{
    m_limit.stop();
    QProcess *const process = std::exchange(m_process, nullptr);
    if (process == nullptr) {
        return;
    }
    process->disconnect(this);
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    // Deleting the object now would wait. The state tells its end also when it fails to start,
    // which finished() doesn't.
    connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState now) {
        if (now == QProcess::NotRunning) {
            process->deleteLater();
        }
    });
    process->kill();
}

void BleHelperProcess::fail()
{
    end();
    Q_EMIT failed();
}

} // namespace tallyforge
