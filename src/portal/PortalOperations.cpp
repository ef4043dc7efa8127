// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The calls of PortalClient about the account's devices and graphics.

#include "portal/PortalClient.h"

#include <QJsonArray>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr QLatin1StringView getVerb = "GET"_L1;
constexpr QLatin1StringView postVerb = "POST"_L1;
constexpr QLatin1StringView putVerb = "PUT"_L1;

// An id may hold any character, a slash included.
QString devicePath(const QString &deviceId, QLatin1StringView tail)
{
    return "/devices/"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(deviceId)) + tail;
}

} // namespace

void PortalClient::listDevices(const Callback &callback)
{
    request(getVerb, u"/devices"_s, nullptr, callback, true);
}

void PortalClient::deviceState(const QString &deviceId, const Callback &callback)
{
    request(getVerb, devicePath(deviceId, "/state"_L1), nullptr, callback, true);
}

void PortalClient::sendCommand(const QString &deviceId, const QString &command,
                               const QJsonObject &args, const Callback &callback)
{
    const QJsonObject body{{u"args"_s, args}};
    request(postVerb, devicePath(deviceId, "/cmd/"_L1) + command, &body, callback, true);
}

void PortalClient::setConfig(const QString &deviceId, const QJsonObject &config,
                             const Callback &callback)
{
    const QJsonObject body{{u"config"_s, config}};
    request(postVerb, devicePath(deviceId, "/config"_L1), &body, callback, true);
}

void PortalClient::linkDevice(const QString &deviceId, const QString &code, const QString &via,
                              const Callback &callback)
{
    QJsonObject body{{u"device_id"_s, deviceId}, {u"via"_s, via}};
    if (!code.isEmpty()) {
        body.insert(u"code"_s, code);
    }
    request(postVerb, u"/devices/link"_s, &body, callback, true);
}

void PortalClient::revealPairing(const QString &deviceId, const Callback &callback)
{
    request(postVerb, devicePath(deviceId, "/pairing/reveal"_L1), nullptr, callback, true);
}

void PortalClient::savePairing(const QString &deviceId, const QString &password,
                               const Callback &callback)
{
    const QJsonObject body{{u"admin_password"_s, password}};
    request(putVerb, devicePath(deviceId, "/pairing"_L1), &body, callback, true);
}

void PortalClient::listGraphicsOutputs(const Callback &callback)
{
    request(getVerb, u"/api/graphics/outputs"_s, nullptr, callback, true);
}

QList<PortalDevice> PortalClient::parseDevices(const QJsonObject &object)
{
    QList<PortalDevice> devices;
    const QJsonArray entries = object.value("devices"_L1).toArray();
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        const PortalDevice device{
            entry.value("device_id"_L1).toString(), entry.value("nickname"_L1).toString(),
            entry.value("status"_L1).toString(), entry.value("ble_passkey"_L1).toString()};
        if (!device.deviceId.isEmpty()) {
            devices.append(device);
        }
    }
    return devices;
}

QList<GraphicsOutput> PortalClient::parseOutputs(const QJsonObject &object, const QString &baseUrl)
{
    QList<GraphicsOutput> outputs;
    const QJsonArray entries = object.value("outputs"_L1).toArray();
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        GraphicsOutput output;
        output.id = entry.value("id"_L1).toString();
        output.name = entry.value("name"_L1).toString();
        output.shareToken = entry.value("share_token"_L1).toString();
        output.deviceId = entry.value("device_id"_L1).toString();
        output.width = entry.value("width"_L1).toInt(output.width);
        output.height = entry.value("height"_L1).toInt(output.height);
        if (output.id.isEmpty() || output.shareToken.isEmpty()) {
            continue;
        }
        if (output.name.isEmpty()) {
            output.name = output.id;
        }
        output.url = baseUrl + "/graphics/o/"_L1 + output.shareToken;
        outputs.append(output);
    }
    return outputs;
}

} // namespace tallyforge
