// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Archive.h"

namespace tallyforge::platform {

QList<Command> unpackCommands(const QString &archive, const QString &directory)
{
    return {{QStringLiteral("/usr/bin/ditto"),
             {QStringLiteral("-x"), QStringLiteral("-k"), archive, directory}}};
}

} // namespace tallyforge::platform
