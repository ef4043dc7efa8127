// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleHelperLines.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

namespace tallyforge {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(tallyforge::BleHelperLines)
};

} // namespace

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
    const QByteArray given = hello.value(QLatin1String("hello")).toString().toUtf8();
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
    reply.ok = line.value(QLatin1String("ok")).toBool();
    if (reply.ok) {
        reply.result = line.value(QLatin1String("result")).toObject();
        return reply;
    }
    const QJsonObject error = line.value(QLatin1String("error")).toObject();
    reply.code = error.value(QLatin1String("code")).toString(QStringLiteral("ble_error"));
    reply.message = error.value(QLatin1String("message")).toString(Texts::tr("Bluetooth error"));
    return reply;
}

QList<BleDeviceInfo> bleDevices(const QJsonObject &result)
{
    const QJsonArray listed = result.value(QLatin1String("devices")).toArray();
    QList<BleDeviceInfo> devices;
    devices.reserve(listed.size());
    for (const QJsonValueConstRef entry : listed) {
        const QJsonObject device = entry.toObject();
        devices.append({device.value(QLatin1String("id")).toString(),
                        device.value(QLatin1String("name")).toString(),
                        device.value(QLatin1String("rssi")).toInt()});
    }
    return devices;
}

} // namespace tallyforge
