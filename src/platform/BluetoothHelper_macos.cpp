// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/BluetoothHelper.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QString bluetoothHelperFile()
{
    return u"Tallyforge Bluetooth Helper.app"_s;
}

void startBluetoothHelper(QProcess *process, const QString &helperPath, quint16 port,
                          const QByteArray &token)
{
    // Only an application that the system has started itself may ask the user for Bluetooth. It is
    // a new instance, because one that ran before has another token, and stays in the background.
    process->start(u"/usr/bin/open"_s,
                   {u"-n"_s, u"-g"_s, u"-a"_s, helperPath, u"--args"_s, u"--port"_s,
                    QString::number(port), u"--token"_s, QString::fromLatin1(token)});
}

bool bluetoothHelperIsItsProcess()
{
    return false;
}

} // namespace tallyforge::platform
