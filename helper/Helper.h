// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "helper/Failure.h"
#include "helper/PluginSocket.h"

#include <QBluetoothAddress>
#include <QBluetoothDeviceInfo>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QObject>

#include <functional>

namespace tallyforge::helper {

class DeviceConnection;
class DeviceScan;

/// Does the plug-in's operations, with one scan, one connection and one write at a time, and ends
/// with the plug-in. Operations begin in the order in which they come, but for "quit", which begins
/// at once.
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
    struct Operation
    {
        QString name;
        int id;
        QJsonObject parameters;
    };

    void onOperation(const QString &name, int id, const QJsonObject &parameters);
    void beginNext();
    void begin(const Operation &operation);
    void bringUp(int id);
    /// Looks for a Bluetooth adapter. Goes on with it, or answers that there is none. No other
    /// operation begins before.
    void withAdapter(int id, const std::function<void(const QBluetoothAddress &)> &then);
    void scan(int id, const QJsonObject &parameters, const QBluetoothAddress &adapter);
    void endScan();
    void onScanned(int id, const QList<QBluetoothDeviceInfo> &devices, int seen);
    void connectDevice(int id, const QJsonObject &parameters, const QBluetoothAddress &adapter);
    void openConnection(int id, const QBluetoothDeviceInfo &device,
                        const QBluetoothAddress &adapter);
    void write(int id, const QJsonObject &parameters);
    void disconnectDevice(int id);
    void quit();

    /// Closes the connection, if there is one, and goes on when it is closed.
    void dropConnection(const std::function<void()> &then);
    void onClosed(DeviceConnection *connection);

    PluginSocket m_plugin;
    QList<Operation> m_operations; // that have not begun, oldest first
    bool m_asking = false;         // the system is being asked for an adapter, or for permission
    QHash<QString, QBluetoothDeviceInfo> m_found; // by the latest scan, by id
    DeviceScan *m_scan = nullptr;                 // child, while one runs
    DeviceConnection *m_connection = nullptr;     // child, until it is closed
    std::function<void()> m_afterClose;
    int m_scanId = 0;  // of the scan that runs
    int m_writeId = 0; // of the write that is under way
    bool m_quitting = false;
};

} // namespace tallyforge::helper
