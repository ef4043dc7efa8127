// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QJsonObject>
#include <QString>

namespace tallyforge {

/// What became of an operation of the Bluetooth helper.
struct BleReply
{
    bool ok = false;
    QJsonObject result; ///< empty on failure
    QString code;       ///< a machine word, empty on success
    QString message;    ///< a sentence for the user, empty on success
};

/// A device of this system that a scan has found.
struct BleDeviceInfo
{
    QString id; ///< the helper's name for it, good for connecting
    QString name;
    int rssi = 0; ///< signal strength in dBm
};

} // namespace tallyforge
