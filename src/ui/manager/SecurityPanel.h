// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "ui/manager/PanelBase.h"

class QPushButton;

namespace tallyforge {

class TextField;

/// What guards a device: the access token and the certificate's fingerprint for those who read it
/// over the network, the Bluetooth passkey and the admin password. What it shows and takes are
/// secrets.
class SecurityPanel final : public PanelBase
{
    Q_OBJECT

public:
    SecurityPanel(DeviceSession *session, QWidget *parent);

    void refresh() override;

Q_SIGNALS:
    /// The device has made a new access token, and takes no older one any more.
    void apiToken(const QString &token);
    /// The device has taken a new admin password.
    void passwordChanged(const QString &password);

private:
    void addNetwork(QBoxLayout *column);
    void addBluetooth(QBoxLayout *column);
    void addPassword(QBoxLayout *column);
    void makeToken();
    void copyToken();
    void showPasskey();
    void changePassword();

    TextField *m_fingerprint = nullptr;
    TextField *m_token = nullptr;
    TextField *m_passkey = nullptr;
    TextField *m_current = nullptr;
    TextField *m_next = nullptr;
    TextField *m_repeated = nullptr;
    QPushButton *m_change = nullptr;
};

} // namespace tallyforge
