// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/BluetoothHelper.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QString bluetoothHelperFile()
{
    return u"tallyforge-bluetooth-helper"_s;
}

void startBluetoothHelper(QProcess *process, const QString &helperPath, quint16 port,
                          const QByteArray &token)
{
    // The helper gets none of OBS's open files. Its error messages go where OBS's own go.
    process->setUnixProcessParameters(QProcess::UnixProcessFlag::CloseFileDescriptors |
                                      QProcess::UnixProcessFlag::ResetSignalHandlers);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->start(helperPath,
                   {u"--port"_s, QString::number(port), u"--token"_s, QString::fromLatin1(token)});
}

bool bluetoothHelperIsItsProcess()
{
    return true;
}

} // namespace tallyforge::platform
