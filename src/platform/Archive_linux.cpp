// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Archive.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QList<Command> unpackCommands(const QString &archive, const QString &directory)
{
    // libarchive's program comes first: it refuses an entry that leads out of the folder instead of
    // bending it, and no path is a pattern to it. 7-Zip is as well kept, and common on desktops.
    // The last is old, but many systems have no other.
    QList<Command> commands{
        {u"bsdtar"_s,
         {u"-x"_s, u"--no-same-owner"_s, u"--no-same-permissions"_s, u"-C"_s, directory, u"-f"_s,
          archive}},
        {u"7z"_s, {u"x"_s, u"-tzip"_s, u"-spd"_s, u"-y"_s, u"-bd"_s, u"-o"_s + directory, archive}},
        {u"unzip"_s, {u"-q"_s, u"-o"_s, archive, u"-d"_s, directory}},
    };
    // What a user's PATH leads to isn't the system's.
    const QStringList folders{u"/usr/bin"_s, u"/bin"_s};
    for (Command &command : commands) {
        command.program = QStandardPaths::findExecutable(command.program, folders);
    }
    commands.removeIf([](const Command &command) { return command.program.isEmpty(); });
    return commands;
}

} // namespace tallyforge::platform
