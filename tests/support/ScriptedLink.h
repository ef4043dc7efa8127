// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceLink.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/ScriptedDevice.h"

#include <QPointer>

namespace tallyforge::test {

/// A link to a scripted device that polls and sends nothing anywhere: each effect comes within the call that causes it.
class ScriptedLink final : public DeviceLink
{
public:
    explicit ScriptedLink(ScriptedDevice &device)
        : m_device(device)
    {
        m_carrier.open = false;
        m_carrier.onSend = [this](const QJsonObject &request) {
            const auto reply = [self = QPointer(this), id = request.value(QLatin1StringView("id"))](QJsonObject reply) {
                reply.insert(QStringLiteral("id"), id);
                if (self && self->m_carrier.open) {
                    Q_EMIT self->m_carrier.message(QJsonDocument(reply).toJson());
                }
            };
            m_device.take(request, reply);
        };
    }
    [[nodiscard]] QString kind() const override { return type; }
    [[nodiscard]] QString address() const override { return place; }
    void open() override
    {
        m_carrier.open = plugged && m_device.greets;
        m_opening = !m_carrier.open;
        if (!plugged) {
            unplug();
        } else if (m_carrier.open) {
            Q_EMIT opened(m_device.info);
        }
    }
    void close() override { m_carrier.open = m_opening = false; }
    [[nodiscard]] RpcTransport *transport() override { return &m_carrier; }
    [[nodiscard]] bool pollsState() const override { return type != QLatin1StringView("usb"); }
    void unplug(const QString &reason = QStringLiteral("Unplugged."))
    {
        plugged = false;
        if (std::exchange(m_carrier.open, false)) {
            Q_EMIT closed(reason);
        } else if (std::exchange(m_opening, false)) {
            Q_EMIT failed(QStringLiteral("open_failed"), QStringLiteral("No device."));
        }
    }

    bool plugged = true;
    QString type = QStringLiteral("lan");
    QString place;

private:
    ScriptedDevice &m_device;
    FakeTransport m_carrier;
    bool m_opening = false;
};

} // namespace tallyforge::test
