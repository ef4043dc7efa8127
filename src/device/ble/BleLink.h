// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "device/DeviceLink.h"
#include "device/ble/BleTransport.h"

#include <QString>

namespace tallyforge {

class BleBridge;

/// A device that is reached over Bluetooth. The whole plug-in has one connection at a time, because
/// the helper holds only one.
class BleLink final : public DeviceLink
{
    Q_OBJECT

public:
    /// id is the one of a BleDeviceInfo, label the name that the user knows the device by.
    BleLink(const QString &id, const QString &label, QObject *parent = nullptr);
    /// The bridge isn't owned and must outlive the link.
    BleLink(BleBridge *bridge, const QString &id, const QString &label, QObject *parent);
    ~BleLink() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("ble"); }
    [[nodiscard]] QString address() const override { return m_id; }
    void open() override;
    void close() override;
    [[nodiscard]] RpcTransport *transport() override { return &m_transport; }
    [[nodiscard]] bool pollsState() const override { return true; }

    [[nodiscard]] QString label() const { return m_label; }

private:
    void connectDevice();
    void onConnected(const BleReply &reply);
    void lose(const QString &reason);

    BleBridge *const m_bridge;
    const QString m_id;
    const QString m_label;
    BleTransport m_transport;
    bool m_connected = false;
    Generation m_generation; // begins with open() and close()
};

} // namespace tallyforge
