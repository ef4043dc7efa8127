// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/PanelBase.h"

#include <functional>

namespace tallyforge {

class NetworkForm;
class RestartBanner;
class WirelessGroup;

/// Puts a device on a network, or has it send its scores to a wireless receiver instead. The change
/// between the two restarts the device; the panel never connects to it anew by itself, and from
/// then on only tells the user to come back later.
class WifiPanel final : public PanelBase
{
    Q_OBJECT

public:
    WifiPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;

Q_SIGNALS:
    /// The device is on a network, with this address there.
    void joined(const QString &ip);

private:
    [[nodiscard]] bool isRestarting() const;
    void loadLink(const std::function<void()> &continuation);
    void scan();
    void onScan(bool ok, const QList<WifiNetwork> &networks, const QString &error);
    void apply();
    void linkAction();
    void askToStopTransmitter();
    void stopTransmitter();
    void askToTransmit(const QString &address, const QString &key, bool generate);
    void transmit(const QString &address, const QString &key, bool generate);
    void startRestartCountdown(const QString &headline, const QString &note);

    WirelessGroup *m_wireless;
    NetworkForm *m_networks;
    RestartBanner *m_banner;
};

} // namespace tallyforge
