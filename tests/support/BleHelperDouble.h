// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/ble/BleFragments.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

namespace tallyforge::test {

/// A Bluetooth helper in the test's own process, with one device behind it. The bridge starts a script
/// that notes its port and token and stays; the double then comes to the port and does as the test says. Left
/// alone it is a healthy helper.
class BleHelperDouble
{
public:
    BleHelperDouble()
    {
        writeScript("#!/bin/sh\nprintf '%s %s\\n' \"$2\" \"$4\" >>\"$0.starts\"\nexec sleep 1000\n");
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(1);
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("helper")); }
    void writeScript(const QByteArray &text) const
    {
        QFile file(path());
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text);
            file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        }
    }

    /// A new connection to the bridge that has sent nothing.
    [[nodiscard]] std::unique_ptr<QTcpSocket> knock() const
    {
        auto visitor = std::make_unique<QTcpSocket>();
        visitor->connectToHost(QHostAddress::LocalHost, port);
        visitor->waitForConnected();
        visitor->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        return visitor;
    }
    [[nodiscard]] QByteArray hello() const { return "{\"hello\":\"" + token + "\"}\n"; }
    /// Comes as the helper that the bridge has started.
    void come()
    {
        socket = knock();
        QObject::connect(socket.get(), &QTcpSocket::readyRead, &m_timer, [this] { read(); });
        socket->write(hello());
    }
    void kill() { socket->abort(); }

    void send(const QByteArray &text) const
    {
        socket->write(text);
        socket->flush();
    }
    [[nodiscard]] static QByteArray line(const QJsonObject &object)
    {
        return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
    }
    [[nodiscard]] static QByteArray okLine(const QJsonObject &op, const QJsonObject &result = {})
    {
        return line({{QStringLiteral("reqId"), op.value(QLatin1StringView("reqId"))},
                     {QStringLiteral("ok"), true},
                     {QStringLiteral("result"), result}});
    }
    [[nodiscard]] static QByteArray dataLine(const QByteArray &bytes)
    {
        return line({{QStringLiteral("ev"), QStringLiteral("data")},
                     {QStringLiteral("b64"), QString::fromLatin1(bytes.toBase64())}});
    }
    void fail(const QJsonObject &op, const QString &code, const QString &message) const
    {
        send(line({{QStringLiteral("reqId"), op.value(QLatin1StringView("reqId"))},
                   {QStringLiteral("error"),
                    QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("message"), message}}}}));
    }
    /// Has the device send a text, in as many writes as the connection's size asks for.
    void notify(const QByteArray &json) const
    {
        const QList<QByteArray> writes = bleEncodeRequest(json, writePayload, 1);
        for (const QByteArray &write : writes) {
            send(dataLine(write));
        }
    }
    /// What a healthy helper does.
    void answer(const QJsonObject &op)
    {
        const QString name = op.value(QLatin1StringView("op")).toString();
        if (name == QLatin1StringView("connect")) {
            send(okLine(op, {{QStringLiteral("writePayload"), writePayload}}));
        } else if (name == QLatin1StringView("scan")) {
            send(okLine(op, scanResult));
        } else if (name == QLatin1StringView("quit")) {
            socket->close();
        } else {
            send(okLine(op));
        }
        if (name == QLatin1StringView("write") && onRequest) {
            const QList<QByteArray> requests = m_requests.feed(bytesOf(op));
            for (const QByteArray &request : requests) {
                onRequest(QJsonDocument::fromJson(request).object());
            }
        }
    }
    [[nodiscard]] static QByteArray bytesOf(const QJsonObject &write)
    {
        return QByteArray::fromBase64(write.value(QLatin1StringView("b64")).toString().toLatin1());
    }
    /// The names of all operations that have come, for example "start connect".
    [[nodiscard]] QString asked() const
    {
        QStringList names;
        for (const QJsonObject &op : ops) {
            names.append(op.value(QLatin1StringView("op")).toString());
        }
        return names.join(u' ');
    }

    bool comesBySelf = true;
    int writePayload = 20;
    QJsonObject scanResult;
    std::function<void(const QJsonObject &op)> onOp = [this](const QJsonObject &op) { answer(op); };
    std::function<void(const QJsonObject &request)> onRequest; ///< whole requests to the device

    int starts = 0;
    quint16 port = 0;
    QByteArray token;
    std::unique_ptr<QTcpSocket> socket;
    QList<QJsonObject> ops;
    QByteArray received; ///< the same as it came

private:
    void look()
    {
        QFile file(path() + QStringLiteral(".starts"));
        if (!file.open(QIODevice::ReadOnly)) {
            return;
        }
        const QByteArrayList lines = file.readAll().split('\n');
        if (lines.size() - 1 > starts) {
            starts = static_cast<int>(lines.size() - 1);
            const QByteArrayList words = lines[starts - 1].split(' ');
            port = words.first().toUShort();
            token = words.last();
            if (comesBySelf) {
                come();
            }
        }
    }
    void read()
    {
        const QByteArray bytes = socket->readAll();
        received += bytes;
        m_buffer += bytes;
        for (qsizetype end = 0; (end = m_buffer.indexOf('\n')) >= 0;) {
            const QJsonObject op = QJsonDocument::fromJson(m_buffer.left(end)).object();
            m_buffer.remove(0, end + 1);
            ops.append(op);
            onOp(op);
        }
    }

    QTemporaryDir m_folder;
    QTimer m_timer;
    QByteArray m_buffer;
    BleReplyAssembler m_requests; // a request's fragments have the same long form
};

} // namespace tallyforge::test
