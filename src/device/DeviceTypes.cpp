// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/DeviceTypes.h"

#include <QJsonArray>
#include <QSet>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tallyforge {

QList<WifiNetwork> WifiNetwork::listFrom(const QJsonObject &scan)
{
    QList<WifiNetwork> networks;
    QSet<QString> seen;
    const QJsonArray entries = scan.value("networks"_L1).toArray();
    for (const QJsonValueConstRef value : entries) {
        const QJsonObject entry = value.toObject();
        const QString ssid = entry.value("ssid"_L1).toString();
        if (ssid.isEmpty() || seen.contains(ssid)) {
            continue;
        }
        seen.insert(ssid);
        networks.append(
            {ssid, entry.value("rssi"_L1).toInt(), entry.value("auth"_L1).toVariant().toString()});
    }
    std::stable_sort(networks.begin(), networks.end(),
                     [](const WifiNetwork &a, const WifiNetwork &b) { return a.rssi > b.rssi; });
    return networks;
}

WirelessLink WirelessLink::fromJson(const QJsonObject &espnow)
{
    const auto text = [&espnow](QLatin1StringView key) { return espnow.value(key).toString(); };
    WirelessLink link;
    link.available = !espnow.isEmpty();
    // A device that is set to transmit counts as transmitting before it has restarted into that.
    link.transmitting = text("role"_L1) == "tx"_L1 || text("configured_role"_L1) == "tx"_L1;
    link.peerMac = text("peer_mac"_L1);
    link.paired = !link.peerMac.isEmpty() && espnow.value("key_set"_L1).toBool();
    link.startError = text("start_error"_L1);
    return link;
}

QJsonObject ControllerChoice::toJson() const
{
    return {{u"manufacturer"_s, manufacturer},
            {u"model"_s, model},
            {u"sport"_s, sport},
            {u"input_type"_s, inputType}};
}

ControllerChoice ControllerChoice::fromJson(const QJsonObject &object)
{
    return {object.value("manufacturer"_L1).toString(), object.value("model"_L1).toString(),
            object.value("sport"_L1).toString(), object.value("input_type"_L1).toString()};
}

QList<ControllerChoice> ControllerChoice::listFrom(const QJsonObject &reply)
{
    QList<ControllerChoice> choices;
    QSet<QString> seen;
    const QJsonArray entries = reply.value("controllers"_L1).toArray();
    for (const QJsonValueConstRef value : entries) {
        const ControllerChoice choice = fromJson(value.toObject());
        const QString key =
            QStringList{choice.manufacturer, choice.model, choice.sport, choice.inputType}.join(
                u'|');
        if (!seen.contains(key)) {
            seen.insert(key);
            choices.append(choice);
        }
    }
    return choices;
}

} // namespace tallyforge
