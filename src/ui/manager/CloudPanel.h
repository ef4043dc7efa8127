// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/PanelBase.h"

class QLineEdit;

namespace tallyforge {

class SettingsStore;
class ThemedLabel;

/// How a device reaches the cloud, and under which name it does.
class CloudPanel final : public PanelBase
{
    Q_OBJECT

public:
    /// The settings aren't owned and must outlive the panel.
    CloudPanel(DeviceSession *session, SettingsStore &settings, QWidget *parent);

    void refresh() override;

Q_SIGNALS:
    /// The session knows the ID that the device has been given.
    void deviceIdChanged();

private:
    void addShare(QBoxLayout *column, SettingsStore &settings);
    void addDeviceId(QBoxLayout *column);
    void load();
    void showStatus(const RpcResult &result);
    void saveDeviceId();
    void readDeviceId();
    void askToForget();

    ThemedLabel *m_status = nullptr;
    QLineEdit *m_deviceId = nullptr;
};

} // namespace tallyforge
