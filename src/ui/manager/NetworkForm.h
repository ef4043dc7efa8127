// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "device/DeviceTypes.h"

#include <QList>
#include <QWidget>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace tallyforge {

/// Lets the user pick or type a network and its password.
class NetworkForm final : public QWidget
{
    Q_OBJECT

public:
    explicit NetworkForm(QWidget *parent);

    /// Offers these networks in their order. A name that stands in the field stays.
    void showNetworks(const QList<WifiNetwork> &networks);
    /// The picked or typed name. A typed one wins over a network that was picked before.
    [[nodiscard]] QString network() const;
    /// As typed: blanks belong to it.
    [[nodiscard]] QString password() const;
    void setScanning(bool scanning);
    void setJoining(bool joining);

Q_SIGNALS:
    void scanWanted();
    void joinWanted();

protected:
    void showEvent(QShowEvent *event) override;

private:
    QComboBox *m_network;
    QLineEdit *m_password;
    QPushButton *m_scan;
    QPushButton *m_join;
};

} // namespace tallyforge
