// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QString>

class QProcess;

namespace tallyforge::platform {

/// The helper's name in the plug-in's data folder: a program, or a bundle that is one.
[[nodiscard]] QString bluetoothHelperFile();

/// Starts the helper, which is to come to this port on loopback and prove itself by the token. The
/// process may be the helper's own or only that of what starts it, so its end says nothing about
/// the helper.
void startBluetoothHelper(QProcess *process, const QString &helperPath, quint16 port,
                          const QByteArray &token);

} // namespace tallyforge::platform
