// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace tallyforge {

/// How a device is reached on the local network.
struct LanDevice
{
    QString host;  ///< address on the network
    QString token; ///< access token of the feed; a secret
    QString name;  ///< display name, may be empty
};

/// The plug-in's lasting settings: one JSON object in one file, held in memory. Every setter writes
/// the whole file at once. A missing key, or a value of another type than expected, reads as the
/// default; keys that aren't known here survive. Main thread only. No failure is reported: the old
/// file then stays, and the new values hold until the end of the run.
class SettingsStore
{
public:
    /// Sets the file's path, to be called before load(). With an empty path nothing is ever
    /// written.
    void setPath(const QString &path) { m_path = path; }

    /// Reads the file; one that is missing or isn't a JSON object gives the defaults.
    void load();
    void save() const;

    /// The device that was last chosen as the live source.
    [[nodiscard]] QString selectedDevice() const;
    void setSelectedDevice(const QString &id);

    /// Whether the hosted data server runs, on which TCP port, and whether others than this
    /// computer may reach it. The port isn't checked here.
    [[nodiscard]] bool serverEnabled() const;
    void setServerEnabled(bool enabled);
    [[nodiscard]] int serverPort() const;
    void setServerPort(int port);
    [[nodiscard]] bool serverAllowNetwork() const;
    void setServerAllowNetwork(bool allow);

    /// Whether a USB device may reach its cloud over this computer's internet connection.
    [[nodiscard]] bool shareConnection() const;
    void setShareConnection(bool share);

    [[nodiscard]] bool autoCheckUpdates() const;
    void setAutoCheckUpdates(bool check);
    /// Seconds since the epoch of the last finished check for updates, 0 for never.
    [[nodiscard]] long long lastUpdateCheck() const;
    void setLastUpdateCheck(long long seconds);

    /// The serial port that was opened last.
    void setLastUsbPort(const QString &name);

    /// "cloud" or "lan": how a device is to be followed. "cloud" for an unknown id.
    [[nodiscard]] QString preferredRoute(const QString &id) const;
    void setPreferredRoute(const QString &id, const QString &route);

    /// Ids that have a LanDevice, sorted.
    [[nodiscard]] QStringList lanDeviceIds() const;
    /// All fields empty for an unknown id.
    [[nodiscard]] LanDevice lanDevice(const QString &id) const;
    void setLanDevice(const QString &id, const LanDevice &device);

private:
    void set(QLatin1StringView key, const QJsonValue &value);
    void setNested(QLatin1StringView key, const QString &id, const QJsonValue &value);

    QString m_path;
    QJsonObject m_data;
};

} // namespace tallyforge
