// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>

class QProcess;

namespace tallyforge::platform {

/// A program and its arguments. The program is empty when the system has none that fits.
struct Command
{
    QString program;
    QStringList arguments;
};

/// The ways in which this system can unpack a zip archive into a folder that exists and is empty,
/// the best first. Each program tells by its exit code whether it could, asks nothing, and writes
/// nothing outside the folder. Both paths are absolute.
[[nodiscard]] QList<Command> unpackCommands(const QString &archive, const QString &directory);

/// The best of them.
[[nodiscard]] Command unpackCommand(const QString &archive, const QString &directory);

/// Prepares a process that isn't started yet: a session of its own, nothing of OBS's open files and
/// settings, less right to the processor than OBS, no file above a size, no more computing time.
void confineUnpacker(QProcess *process, qint64 largestFile, std::chrono::seconds computingTime);

/// Ends a process that was prepared so, with everything that it has started.
void killUnpacker(const QProcess &process);

} // namespace tallyforge::platform
