// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "plugin/AccountLists.h"

#include "portal/PortalClient.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>

namespace tallyforge {

AccountLists::AccountLists(PortalClient *portal)
    : m_portal(portal)
{
}

AccountGraphics AccountLists::graphics() const
{
    const std::shared_lock lock(m_graphicsMutex);
    return m_graphics;
}

bool AccountLists::hasDevice(const QString &id) const
{
    return std::any_of(m_devices.begin(), m_devices.end(),
                       [&id](const PortalDevice &device) { return device.deviceId == id; });
}

void AccountLists::setSignedIn(bool signedIn)
{
    std::unique_lock lock(m_graphicsMutex);
    m_graphics.signedIn = signedIn;
    if (signedIn) {
        return;
    }
    m_graphics.outputs.clear();
    lock.unlock();
    m_devices.clear();
    Q_EMIT devicesChanged();
    Q_EMIT outputsChanged();
}

void AccountLists::refreshDevices(const Callback &callback)
{
    m_portal->listDevices([this, callback](const PortalResult &result) {
        if (result.ok) {
            m_devices = PortalClient::parseDevices(result.data);
            Q_EMIT devicesChanged();
        }
        if (callback) {
            callback(result.ok, result.message);
        }
    });
}

void AccountLists::refreshOutputs(const Callback &callback)
{
    if (!m_portal->signedIn()) {
        setOutputsError(tr("Sign in from the Tallyforge dock to see your graphics."));
        if (callback) {
            callback(false, m_graphics.error);
        }
        return;
    }
    m_portal->listGraphicsOutputs([this, callback](const PortalResult &result) {
        if (result.ok) {
            setOutputs(PortalClient::parseOutputs(result.data, m_portal->baseUrl()));
        } else if (!result.isOfEndedSession()) {
            setOutputsError(result.message);
        }
        if (callback) {
            callback(result.ok, m_graphics.error);
        }
    });
}

bool AccountLists::refreshOutputsBlocking(int timeoutMs)
{
    // The callback may run long after this function has returned.
    const auto succeeded = std::make_shared<std::optional<bool>>();
    QEventLoop loop;
    refreshOutputs([succeeded, loop = QPointer(&loop)](bool ok, const QString &) {
        *succeeded = ok;
        if (loop) {
            loop->quit();
        }
    });
    if (!succeeded->has_value()) {
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer); // a coarse one may be late by a twentieth
        connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        connect(this, &AccountLists::waitEnded, &loop, &QEventLoop::quit);
        connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
        timer.start(timeoutMs);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    return succeeded->value_or(false);
}

void AccountLists::endWait()
{
    Q_EMIT waitEnded();
}

void AccountLists::setOutputs(const QList<GraphicsOutput> &outputs)
{
    std::unique_lock lock(m_graphicsMutex);
    m_graphics.outputs = outputs;
    m_graphics.error.clear();
    lock.unlock();
    Q_EMIT outputsChanged();
}

void AccountLists::setOutputsError(const QString &error)
{
    const std::unique_lock lock(m_graphicsMutex);
    m_graphics.error = error;
}

} // namespace tallyforge
