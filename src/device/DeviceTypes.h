// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace tallyforge {

/// A network that a device can see.
struct WifiNetwork
{
    QString ssid;
    int rssi = 0; ///< signal strength in dBm
    QString auth; ///< the kind of security, in the device's word

    /// The networks of a scan: one for each name, the first that came, by falling strength.
    [[nodiscard]] static QList<WifiNetwork> listFrom(const QJsonObject &scan);
};

/// A device's radio link to a wireless receiver.
struct WirelessLink
{
    bool available = false;    ///< the device has such a radio
    bool transmitting = false; ///< it sends its scores to a receiver instead of using Wi-Fi
    bool paired = false;       ///< a receiver's address and a key are stored
    QString peerMac;
    QString startError; ///< why the radio didn't start, if it didn't

    [[nodiscard]] static WirelessLink fromJson(const QJsonObject &espnow);
};

/// The scoreboard that a device reads from. All empty: no preference.
struct ControllerChoice
{
    QString manufacturer;
    QString model;
    QString sport;
    QString inputType;

    [[nodiscard]] QJsonObject toJson() const;
    [[nodiscard]] static ControllerChoice fromJson(const QJsonObject &object);
    /// A device's list in its order, each choice once.
    [[nodiscard]] static QList<ControllerChoice> listFrom(const QJsonObject &reply);
    bool operator==(const ControllerChoice &) const = default;
};

} // namespace tallyforge
