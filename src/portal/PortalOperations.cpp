// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The calls of PortalClient about the account's devices and graphics.

#include "portal/PortalClient.h"

#include <QJsonArray>
#include <QUrl>

namespace tallyforge {

namespace {

constexpr QLatin1String getVerb("GET");
constexpr QLatin1String postVerb("POST");
constexpr QLatin1String putVerb("PUT");

// An id may hold any character, a slash included.
QString devicePath(const QString &deviceId, QLatin1String tail)
{
    return QLatin1String("/devices/") + QString::fromLatin1(QUrl::toPercentEncoding(deviceId)) +
           tail;
}

} // namespace

void PortalClient::listDevices(const Callback &callback)
{
    request(getVerb, QStringLiteral("/devices"), nullptr, callback, true);
}

void PortalClient::deviceState(const QString &deviceId, const Callback &callback)
{
    request(getVerb, devicePath(deviceId, QLatin1String("/state")), nullptr, callback, true);
}

void PortalClient::sendCommand(const QString &deviceId, const QString &command,
                               const QJsonObject &args, const Callback &callback)
{
    const QJsonObject body{{QStringLiteral("args"), args}};
    request(postVerb, devicePath(deviceId, QLatin1String("/cmd/")) + command, &body, callback,
            true);
}

void PortalClient::setConfig(const QString &deviceId, const QJsonObject &config,
                             const Callback &callback)
{
    const QJsonObject body{{QStringLiteral("config"), config}};
    request(postVerb, devicePath(deviceId, QLatin1String("/config")), &body, callback, true);
}

void PortalClient::linkDevice(const QString &deviceId, const QString &code, const QString &via,
                              const Callback &callback)
{
    QJsonObject body{{QStringLiteral("device_id"), deviceId}, {QStringLiteral("via"), via}};
    if (!code.isEmpty()) {
        body.insert(QStringLiteral("code"), code);
    }
    request(postVerb, QStringLiteral("/devices/link"), &body, callback, true);
}

void PortalClient::revealPairing(const QString &deviceId, const Callback &callback)
{
    request(postVerb, devicePath(deviceId, QLatin1String("/pairing/reveal")), nullptr, callback,
            true);
}

void PortalClient::savePairing(const QString &deviceId, const QString &password,
                               const Callback &callback)
{
    const QJsonObject body{{QStringLiteral("admin_password"), password}};
    request(putVerb, devicePath(deviceId, QLatin1String("/pairing")), &body, callback, true);
}

void PortalClient::listGraphicsOutputs(const Callback &callback)
{
    request(getVerb, QStringLiteral("/api/graphics/outputs"), nullptr, callback, true);
}

QList<PortalDevice> PortalClient::parseDevices(const QJsonObject &object)
{
    QList<PortalDevice> devices;
    const QJsonArray entries = object.value(QLatin1String("devices")).toArray();
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        const PortalDevice device{entry.value(QLatin1String("device_id")).toString(),
                                  entry.value(QLatin1String("nickname")).toString(),
                                  entry.value(QLatin1String("status")).toString(),
                                  entry.value(QLatin1String("ble_passkey")).toString()};
        if (!device.deviceId.isEmpty()) {
            devices.append(device);
        }
    }
    return devices;
}

QList<GraphicsOutput> PortalClient::parseOutputs(const QJsonObject &object, const QString &baseUrl)
{
    QList<GraphicsOutput> outputs;
    const QJsonArray entries = object.value(QLatin1String("outputs")).toArray();
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        GraphicsOutput output;
        output.id = entry.value(QLatin1String("id")).toString();
        output.name = entry.value(QLatin1String("name")).toString();
        output.shareToken = entry.value(QLatin1String("share_token")).toString();
        output.deviceId = entry.value(QLatin1String("device_id")).toString();
        output.width = entry.value(QLatin1String("width")).toInt(output.width);
        output.height = entry.value(QLatin1String("height")).toInt(output.height);
        if (output.id.isEmpty() || output.shareToken.isEmpty()) {
            continue;
        }
        if (output.name.isEmpty()) {
            output.name = output.id;
        }
        output.url = baseUrl + QLatin1String("/graphics/o/") + output.shareToken;
        outputs.append(output);
    }
    return outputs;
}

} // namespace tallyforge
