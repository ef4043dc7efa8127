// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "ui/manager/StatusText.h"

#include "common/JsonText.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

QString line(const QString &label, const QString &value)
{
    return label + u": "_s + value;
}

QString scalar(const QJsonValue &value)
{
    if (value.isBool()) {
        return value.toBool() ? QCoreApplication::translate("StatusText", "yes")
                              : QCoreApplication::translate("StatusText", "no");
    }
    return jsonToText(value);
}

QString prettyKey(const QString &key)
{
    static constexpr std::pair<QLatin1StringView, const char *> labels[]{
        {"device_id"_L1, QT_TRANSLATE_NOOP("StatusText", "Device ID")},
        {"firmware_version"_L1, QT_TRANSLATE_NOOP("StatusText", "Firmware")},
        {"wifi_sta_ip"_L1, QT_TRANSLATE_NOOP("StatusText", "Wi-Fi address")},
        {"wifi_sta_ssid"_L1, QT_TRANSLATE_NOOP("StatusText", "Wi-Fi network")},
        {"wifi_sta_status"_L1, QT_TRANSLATE_NOOP("StatusText", "Wi-Fi status")},
        {"wifi_sta_rssi"_L1, QT_TRANSLATE_NOOP("StatusText", "Wi-Fi signal (dBm)")},
        {"eth_ip"_L1, QT_TRANSLATE_NOOP("StatusText", "Ethernet address")},
        {"mqtt_connected"_L1, QT_TRANSLATE_NOOP("StatusText", "Cloud connected")},
        {"mqtt_transport"_L1, QT_TRANSLATE_NOOP("StatusText", "Cloud route")},
        {"tcp_clients"_L1, QT_TRANSLATE_NOOP("StatusText", "TCP clients")},
        {"reset_reason"_L1, QT_TRANSLATE_NOOP("StatusText", "Last restart")},
        {"uptime_s"_L1, QT_TRANSLATE_NOOP("StatusText", "Uptime (s)")},
        {"tls_fingerprint"_L1, QT_TRANSLATE_NOOP("StatusText", "TLS fingerprint")},
        {"must_change_password"_L1, QT_TRANSLATE_NOOP("StatusText", "Password change needed")},
    };
    const auto *found =
        std::ranges::find(labels, key, [](const auto &label) { return label.first; });
    return found == std::end(labels) ? key
                                     : QCoreApplication::translate("StatusText", found->second);
}

QStringList sortedKeys(const QJsonObject &status)
{
    static const QStringList first{u"device_id"_s,     u"firmware_version"_s, u"wifi_sta_ssid"_s,
                                   u"wifi_sta_ip"_s,   u"eth_ip"_s,           u"mqtt_connected"_s,
                                   u"mqtt_transport"_s};
    const auto place = [](const QString &key) {
        const qsizetype index = first.indexOf(key);
        return std::pair(index < 0 ? first.size() : index, key);
    };
    QStringList keys = status.keys();
    std::ranges::sort(keys, {}, place);
    return keys;
}

QString members(const QJsonObject &object)
{
    QStringList parts;
    for (auto member = object.begin(); member != object.end(); ++member) {
        parts.append(member.key() + u'=' + scalar(*member));
    }
    return parts.join(u", "_s);
}

} // namespace

QString statusText(const QJsonObject &status)
{
    QStringList lines;
    const QStringList keys = sortedKeys(status);
    for (const QString &key : keys) {
        const QJsonValue value = status.value(key);
        if (key != "csrf_token"_L1 && !value.isArray()) {
            lines.append(
                line(prettyKey(key), value.isObject() ? members(value.toObject()) : scalar(value)));
        }
    }
    return lines.join(u'\n');
}

QString scoreboardText(const QJsonObject &envelope)
{
    QStringList lines;
    if (const QString sport = envelope.value("sport"_L1).toString(); !sport.isEmpty()) {
        lines.append(QCoreApplication::translate("StatusText", "Sport: %1").arg(sport));
    }
    const QJsonObject fields = envelope.value("fields"_L1).toObject();
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        lines.append(line(field.key(), scalar(*field)));
    }
    return lines.isEmpty() ? QCoreApplication::translate("StatusText", "No scoreboard data yet.")
                           : lines.join(u'\n');
}

} // namespace tallyforge
