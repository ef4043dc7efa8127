// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "core/SettingsStore.h"

#include "common/PrivateFile.h"

#include <QFile>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace tallyforge {

namespace {

constexpr QLatin1StringView selectedDeviceKey = "selected_device"_L1;
constexpr QLatin1StringView serverEnabledKey = "server_enabled"_L1;
constexpr QLatin1StringView serverPortKey = "server_port"_L1;
constexpr QLatin1StringView serverAllowNetworkKey = "server_allow_network"_L1;
constexpr QLatin1StringView shareConnectionKey = "share_connection"_L1;
constexpr QLatin1StringView autoCheckUpdatesKey = "auto_check_updates"_L1;
constexpr QLatin1StringView lastUpdateCheckKey = "last_update_check"_L1;
constexpr QLatin1StringView lastUsbPortKey = "last_usb_port"_L1;
constexpr QLatin1StringView routesKey = "routes"_L1;
constexpr QLatin1StringView lanKey = "lan"_L1;
constexpr QLatin1StringView hostKey = "host"_L1;
constexpr QLatin1StringView tokenKey = "token"_L1;
constexpr QLatin1StringView nameKey = "name"_L1;

constexpr int defaultServerPort = 9001;

} // namespace

void SettingsStore::load()
{
    m_data = {};
    QFile file(m_path);
    if (m_path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    m_data = QJsonDocument::fromJson(file.readAll()).object();
}

void SettingsStore::save() const
{
    if (!m_path.isEmpty()) {
        savePrivateFile(m_path, QJsonDocument(m_data).toJson(QJsonDocument::Indented));
    }
}

void SettingsStore::set(QLatin1StringView key, const QJsonValue &value)
{
    m_data.insert(key, value);
    save();
}

void SettingsStore::setNested(QLatin1StringView key, const QString &id, const QJsonValue &value)
{
    QJsonObject nested = m_data.value(key).toObject();
    nested.insert(id, value);
    set(key, nested);
}

QString SettingsStore::selectedDevice() const
{
    return m_data.value(selectedDeviceKey).toString();
}

void SettingsStore::setSelectedDevice(const QString &id)
{
    set(selectedDeviceKey, id);
}

bool SettingsStore::serverEnabled() const
{
    return m_data.value(serverEnabledKey).toBool(false);
}

void SettingsStore::setServerEnabled(bool enabled)
{
    set(serverEnabledKey, enabled);
}

int SettingsStore::serverPort() const
{
    return m_data.value(serverPortKey).toInt(defaultServerPort);
}

void SettingsStore::setServerPort(int port)
{
    set(serverPortKey, port);
}

bool SettingsStore::serverAllowNetwork() const
{
    return m_data.value(serverAllowNetworkKey).toBool(false);
}

void SettingsStore::setServerAllowNetwork(bool allow)
{
    set(serverAllowNetworkKey, allow);
}

bool SettingsStore::shareConnection() const
{
    return m_data.value(shareConnectionKey).toBool(true);
}

void SettingsStore::setShareConnection(bool share)
{
    set(shareConnectionKey, share);
}

bool SettingsStore::autoCheckUpdates() const
{
    return m_data.value(autoCheckUpdatesKey).toBool(true);
}

void SettingsStore::setAutoCheckUpdates(bool check)
{
    set(autoCheckUpdatesKey, check);
}

long long SettingsStore::lastUpdateCheck() const
{
    const double seconds = m_data.value(lastUpdateCheckKey).toDouble();
    // 2^63: what a damaged file may hold beyond it has no 64-bit integer.
    constexpr double limit = 9223372036854775808.0;
    return seconds > -limit && seconds < limit ? static_cast<long long>(seconds) : 0;
}

void SettingsStore::setLastUpdateCheck(long long seconds)
{
    set(lastUpdateCheckKey, static_cast<double>(seconds));
}

void SettingsStore::setLastUsbPort(const QString &name)
{
    set(lastUsbPortKey, name);
}

QString SettingsStore::preferredRoute(const QString &id) const
{
    return m_data.value(routesKey).toObject().value(id).toString(u"cloud"_s);
}

void SettingsStore::setPreferredRoute(const QString &id, const QString &route)
{
    setNested(routesKey, id, route);
}

QStringList SettingsStore::lanDeviceIds() const
{
    return m_data.value(lanKey).toObject().keys();
}

LanDevice SettingsStore::lanDevice(const QString &id) const
{
    const QJsonObject entry = m_data.value(lanKey).toObject().value(id).toObject();
    return {entry.value(hostKey).toString(), entry.value(tokenKey).toString(),
            entry.value(nameKey).toString()};
}

void SettingsStore::setLanDevice(const QString &id, const LanDevice &device)
{
    setNested(
        lanKey, id,
        QJsonObject{{hostKey, device.host}, {tokenKey, device.token}, {nameKey, device.name}});
}

} // namespace tallyforge
