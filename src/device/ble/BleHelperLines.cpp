// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperLines.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tallyforge {

std::optional<QJsonObject> BleHelperLines::take()
{
    while (const std::optional<QByteArray> line = m_buffer.takeLine()) {
        if (const QJsonDocument document = QJsonDocument::fromJson(*line); document.isObject()) {
            return document.object();
        }
    }
    return std::nullopt;
}

bool bleProvesToken(const QJsonObject &hello, const QByteArray &token)
{
    const QByteArray given = hello.value("hello"_L1).toString().toUtf8();
    if (token.isEmpty() || given.size() != token.size()) {
        return false;
    }
    int difference = 0;
    for (qsizetype i = 0; i < token.size(); ++i) {
        difference |= given[i] ^ token[i];
    }
    return difference == 0;
}

BleReply bleReply(const QJsonObject &line)
{
    BleReply reply;
    reply.ok = line.value("ok"_L1).toBool();
    if (reply.ok) {
        reply.result = line.value("result"_L1).toObject();
        return reply;
    }
    const QJsonObject error = line.value("error"_L1).toObject();
    reply.code = error.value("code"_L1).toString(u"ble_error"_s);
    const QJsonValue message = error.value("message"_L1);
    reply.message = message.isString() ? bleSentence(message.toString())
                                       : QCoreApplication::translate("tallyforge::BleHelperLines",
                                                                     "Bluetooth error");
    return reply;
}

QString bleSentence(const QString &english)
{
    return english.isEmpty() ? QString()
                             : QCoreApplication::translate("tallyforge::BluetoothHelper",
                                                           english.toUtf8().constData());
}

QList<BleDeviceInfo> bleDevices(const QJsonObject &result)
{
    const QJsonArray listed = result.value("devices"_L1).toArray();
    QList<BleDeviceInfo> devices;
    devices.reserve(listed.size());
    for (const QJsonValueConstRef entry : listed) {
        const QJsonObject device = entry.toObject();
        devices.append({device.value("id"_L1).toString(), device.value("name"_L1).toString(),
                        device.value("rssi"_L1).toInt()});
    }
    return devices;
}

} // namespace tallyforge
