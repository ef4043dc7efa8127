// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Archive.h"

#include <QStandardPaths>

namespace tallyforge::platform {

Command unpackCommand(const QString &archive, const QString &directory)
{
    // What a user's PATH holds is not the system's: only its own folders count.
    const QStringList folders{QStringLiteral("/usr/bin"), QStringLiteral("/bin")};
    const Command candidates[] = {
        {QStringLiteral("bsdtar"),
         {QStringLiteral("-x"), QStringLiteral("--no-same-owner"),
          QStringLiteral("--no-same-permissions"), QStringLiteral("-C"), directory,
          QStringLiteral("-f"), archive}},
        {QStringLiteral("7z"),
         {QStringLiteral("x"), QStringLiteral("-tzip"), QStringLiteral("-y"), QStringLiteral("-bd"),
          QStringLiteral("-o") + directory, archive}},
        {QStringLiteral("unzip"),
         {QStringLiteral("-q"), QStringLiteral("-o"), archive, QStringLiteral("-d"), directory}},
    };
    for (const Command &candidate : candidates) {
        const QString found = QStandardPaths::findExecutable(candidate.program, folders);
        if (!found.isEmpty()) {
            return {found, candidate.arguments};
        }
    }
    return {};
}

} // namespace tallyforge::platform
