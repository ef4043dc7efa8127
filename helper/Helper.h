// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "helper/Failure.h"
#include "helper/PluginSocket.h"

#include <QBluetoothDeviceInfo>
#include <QHash>
#include <QJsonObject>
#include <QObject>

#include <functional>

namespace tallyforge::helper {

class DeviceConnection;
class DeviceScan;

/// Does the plug-in's operations, with one scan, one connection and one write at a time, and ends
/// with the plug-in.
class Helper final : public QObject
{
    Q_OBJECT

public:
    explicit Helper(QObject *parent = nullptr);

    void start(quint16 port, const QString &token);

Q_SIGNALS:
    /// Nothing is left to be done.
    void finished();

private:
    void onOperation(const QString &name, int id, const QJsonObject &parameters);
    void bringUp(int id);
    /// Goes on if there is Bluetooth, and otherwise answers that there is none.
    void whenAvailable(int id, const std::function<void()> &then);
    void scan(int id, const QJsonObject &parameters);
    void endScan();
    void onScanned(int id, const QList<QBluetoothDeviceInfo> &devices, int seen);
    void connectDevice(int id, const QJsonObject &parameters);
    void openConnection(int id, const QBluetoothDeviceInfo &device);
    void write(int id, const QJsonObject &parameters);
    void disconnectDevice(int id);
    void quit();

    /// Closes what connection there is, and goes on when it is closed.
    void dropConnection(const std::function<void()> &then);
    void onClosed(DeviceConnection *connection);

    PluginSocket m_plugin;
    QHash<QString, QBluetoothDeviceInfo> m_found; // by the latest scan, by id
    DeviceScan *m_scan = nullptr;                 // child, while one runs
    DeviceConnection *m_connection = nullptr;     // child, until it is closed
    std::function<void()> m_afterClose;
    int m_writeId = 0; // of the write under way
    bool m_quitting = false;
};

} // namespace tallyforge::helper
