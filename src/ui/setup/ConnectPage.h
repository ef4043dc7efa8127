// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "common/Generation.h"
#include "ui/setup/Carriers.h"
#include "ui/setup/SetupPage.h"

class QComboBox;
class QListWidget;
class QRadioButton;

namespace tallyforge {

class SettingsStore;

/// Has the user choose a device: finds the serial ports, looks for Bluetooth devices, and knows the
/// devices that were set up on the local network.
class ConnectPage final : public SetupPage
{
    Q_OBJECT

public:
    /// settings isn't owned and must outlive the page.
    ConnectPage(Carriers carriers, const SettingsStore &settings, QWidget *parent);

    /// Lists the devices of the chosen carrier anew.
    void scan();
    /// A Bluetooth scan under way changes nothing any more.
    void dropScan() { m_scans.next(); }

Q_SIGNALS:
    void connectRequested(const tallyforge::DeviceChoice &choice);

private:
    void addCarriers();
    void addDevices();
    void addHost();
    void addButtons();
    void scanUsb();
    void scanBluetooth();
    void onBluetoothScanned(bool ok, const QList<BleDeviceInfo> &devices, int seen,
                            const QString &code, const QString &message);
    void listLanDevices();
    void addItem(const QString &text, const QString &address, const QString &label);
    void showNetwork(bool show);
    void onRowChanged(int row);
    void onHostChanged(const QString &text);
    void choose();
    void chooseOnNetwork();

    const Carriers m_carriers;
    const SettingsStore &m_settings;
    QRadioButton *m_usb = nullptr;
    QRadioButton *m_bluetooth = nullptr;
    QRadioButton *m_network = nullptr;
    ThemedLabel *m_hint = nullptr;
    QListWidget *m_list = nullptr;
    QComboBox *m_host = nullptr; // on the local network; null until it is needed
    ThemedLabel *m_status = nullptr;
    QPushButton *m_scanAgain = nullptr;
    QPushButton *m_connect = nullptr;
    Generation m_scans; // of Bluetooth
};

} // namespace tallyforge
