// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/BluetoothHelper.h"

#include <QProcess>

namespace tallyforge::platform {

QString bluetoothHelperFile()
{
    return QStringLiteral("Tallyforge Bluetooth Helper.app");
}

void startBluetoothHelper(QProcess *process, const QString &helperPath, quint16 port,
                          const QByteArray &token)
{
    // Only an application that the system has started itself may ask the user for Bluetooth. A new
    // instance, since one that ran before has another token; in the background.
    process->start(QStringLiteral("/usr/bin/open"),
                   {QStringLiteral("-n"), QStringLiteral("-g"), QStringLiteral("-a"), helperPath,
                    QStringLiteral("--args"), QStringLiteral("--port"), QString::number(port),
                    QStringLiteral("--token"), QString::fromLatin1(token)});
}

} // namespace tallyforge::platform
