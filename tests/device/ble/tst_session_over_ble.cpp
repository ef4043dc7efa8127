// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The link over one bridge and one helper for all sessions, as in the plug-in, in writes of the least size.

#include "device/ble/BleBridge.h"
#include "device/ble/BleLink.h"
#include "tests/device/SessionContract.h"
#include "tests/support/BleHelperDouble.h"

#include <QTest>

#include <utility>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

class SessionOverBle : public SessionContract
{
    Q_OBJECT

    [[nodiscard]] bool waitsForever() const override { return false; }
    DeviceLink *makeLink() override
    {
        m_helper.onOp = [this](const QJsonObject &op) { answer(op); };
        m_helper.onRequest = [this](const QJsonObject &request) {
            m_device.take(request,
                          [this, id = request.value(u"id"_s)](const QJsonObject &reply) { notify(reply, id); });
        };
        m_connected = false; // writes of an earlier link may still be on their way
        m_connects.clear();
        m_bridge.setHelperPath(m_helper.path());
        plugIn();
        return new BleLink(&m_bridge, u"id-1"_s, {}, nullptr);
    }
    void unplug() override
    {
        m_present = false;
        if (std::exchange(m_connected, false)) {
            m_helper.send("{\"ev\":\"disconnected\"}\n");
        }
        const QList<QJsonObject> connects = std::exchange(m_connects, {});
        for (const QJsonObject &op : connects) {
            m_helper.fail(op, u"not_found"_s, u"The device is out of range."_s);
        }
    }
    void plugIn() override { m_present = true; }
    [[nodiscard]] bool introducesTheDevice() const override { return false; }

    void answer(const QJsonObject &op)
    {
        const QString name = op.value(u"op"_s).toString();
        if (name == u"connect" && m_present && !m_device.greets) {
            m_connects.append(op);
        } else if ((name == u"connect" && !m_present) || (name == u"write" && !m_connected)) {
            m_helper.fail(op, u"not_found"_s, u"The device is out of range."_s);
        } else {
            m_connected = name == u"connect" || (m_connected && name != u"disconnect");
            m_helper.answer(op);
        }
    }
    void notify(QJsonObject reply, const QJsonValue &id)
    {
        reply.insert(u"id"_s, id);
        m_helper.notify(QJsonDocument(reply).toJson(QJsonDocument::Compact));
    }

    BleHelperDouble m_helper;
    BleBridge m_bridge;
    QList<QJsonObject> m_connects; // that the device lets wait
    bool m_present = true;
    bool m_connected = false;
};

QTEST_GUILESS_MAIN(SessionOverBle)
#include "tst_session_over_ble.moc"
