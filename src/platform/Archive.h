// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>
#include <QStringList>

class QProcess;

namespace tallyforge::platform {

/// A program and what it is called with. The program is empty when the system has none that fits.
struct Command
{
    QString program;
    QStringList arguments;
};

/// How this system unpacks a zip archive into a folder that exists and is empty. The program tells
/// by its exit code whether it could, asks nothing, and writes nothing outside the folder. Both
/// paths are absolute.
[[nodiscard]] Command unpackCommand(const QString &archive, const QString &directory);

} // namespace tallyforge::platform
