// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Archive.h"

using namespace Qt::StringLiterals;

namespace tallyforge::platform {

QList<Command> unpackCommands(const QString &archive, const QString &directory)
{
    return {{u"/usr/bin/ditto"_s, {u"-x"_s, u"-k"_s, archive, directory}}};
}

} // namespace tallyforge::platform
