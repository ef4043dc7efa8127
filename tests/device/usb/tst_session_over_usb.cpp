// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The cable's link on a real pseudo-terminal, which a symbolic link stands for, so that a device that was unplugged
// comes back at the same path.

#include "device/usb/UsbLink.h"
#include "tests/device/SessionContract.h"
#include "tests/support/UsbPeer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tallyforge;
using namespace tallyforge::test;
using namespace Qt::StringLiterals;

class SessionOverUsb : public SessionContract
{
    Q_OBJECT

    DeviceLink *makeLink() override
    {
        plugIn();
        return new UsbLink(m_path);
    }
    void unplug() override { m_pty->unplug(); }
    void plugIn() override
    {
        m_pty = std::make_unique<Pty>();
        QFile::remove(m_path);
        QVERIFY(QFile::link(m_pty->path(), m_path));
        m_requests.reset();
        m_peer = std::make_unique<UsbPeer>(*m_pty);
        m_peer->onFrame = [this](const UsbFrame &frame) { onFrame(frame); };
    }
    void push(const QJsonObject &envelope) override
    {
        m_pty->send(buildFrame(UsbFrame::Envelope, QJsonDocument(envelope).toJson(QJsonDocument::Compact)));
    }

    void onFrame(const UsbFrame &frame)
    {
        if (frame.type == UsbFrame::Ctrl && frame.payload.contains("hello") && m_device.greets) {
            QJsonObject greeting = m_device.info;
            greeting.insert(u"t"_s, greeting.take(u"receiver"_s).toBool() ? u"rx_status"_s : u"hello"_s);
            m_peer->ctrl(QJsonDocument(greeting).toJson());
        }
        const QByteArray text = frame.type == UsbFrame::Admin ? m_requests.feed(frame.payload) : QByteArray();
        if (!text.isEmpty()) {
            const QJsonObject request = QJsonDocument::fromJson(text).object();
            m_device.take(request,
                          [this, id = request.value(u"id"_s)](const QJsonObject &reply) { answer(reply, id); });
        }
    }
    void answer(QJsonObject reply, const QJsonValue &id)
    {
        reply.insert(u"id"_s, id);
        const QList<QByteArray> frames = buildAdminFrames(QJsonDocument(reply).toJson(QJsonDocument::Compact));
        for (const QByteArray &frame : frames) {
            if (m_pty->fd() >= 0) {
                m_pty->send(frame);
            }
        }
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"port"_s);
    std::unique_ptr<Pty> m_pty;
    std::unique_ptr<UsbPeer> m_peer;
    AdminReassembler m_requests;
};

QTEST_GUILESS_MAIN(SessionOverUsb)
#include "tst_session_over_usb.moc"
