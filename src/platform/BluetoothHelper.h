// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QString>

class QProcess;

namespace tallyforge::platform {

/// The helper's name in the plug-in's data folder: a program, or a bundle that is one.
[[nodiscard]] QString bluetoothHelperFile();

/// Starts the helper, which is to come to this port on loopback and prove itself by the token.
void startBluetoothHelper(QProcess *process, const QString &helperPath, quint16 port,
                          const QByteArray &token);

/// Whether that process is the helper itself, so that the helper has gone when the process ends.
/// Otherwise the process only asks the system to start the helper, and its end says nothing.
[[nodiscard]] bool bluetoothHelperIsItsProcess();

} // namespace tallyforge::platform
