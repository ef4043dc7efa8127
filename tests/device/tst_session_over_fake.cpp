// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// A link that polls and sends nothing anywhere: each effect comes within the call that causes it.

#include "device/DeviceLink.h"
#include "tests/device/SessionContract.h"
#include "tests/support/FakeTransport.h"

#include <QPointer>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

namespace {

class ScriptedLink final : public DeviceLink
{
public:
    explicit ScriptedLink(ScriptedDevice &device)
        : m_device(device)
    {
        m_carrier.open = false;
        m_carrier.onSend = [this](const QJsonObject &request) {
            const auto reply = [self = QPointer(this), id = request.value(u"id"_s)](QJsonObject reply) {
                reply.insert(u"id"_s, id);
                if (self && self->m_carrier.open) {
                    Q_EMIT self->m_carrier.message(QJsonDocument(reply).toJson());
                }
            };
            m_device.take(request, reply);
        };
    }
    [[nodiscard]] QString kind() const override { return u"lan"_s; }
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
    [[nodiscard]] bool pollsState() const override { return true; }
    void unplug()
    {
        plugged = false;
        if (std::exchange(m_carrier.open, false)) {
            Q_EMIT closed(u"Unplugged."_s);
        } else if (std::exchange(m_opening, false)) {
            Q_EMIT failed(u"open_failed"_s, u"No device."_s);
        }
    }

    bool plugged = true;

private:
    ScriptedDevice &m_device;
    FakeTransport m_carrier;
    bool m_opening = false;
};

} // namespace

class SessionOverFake : public SessionContract
{
    Q_OBJECT

    DeviceLink *makeLink() override { return m_link = new ScriptedLink(m_device); }
    void unplug() override { m_link->unplug(); }
    void plugIn() override { m_link->plugged = true; }

    ScriptedLink *m_link = nullptr; // the session's
};

QTEST_GUILESS_MAIN(SessionOverFake)
#include "tst_session_over_fake.moc"
