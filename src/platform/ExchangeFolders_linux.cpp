// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/ExchangeFolders.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace tallyforge::platform {

Exchange exchangeFolders(const QString &first, const QString &second)
{
    if (renameat2(AT_FDCWD, QFile::encodeName(first).constData(), AT_FDCWD,
                  QFile::encodeName(second).constData(), RENAME_EXCHANGE) == 0) {
        return Exchange::Done;
    }
    return errno == EXDEV ? Exchange::OtherFileSystem : Exchange::NotPossible;
}

} // namespace tallyforge::platform
