// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/ExchangeFolders.h"

#include <QFile>

#include <cerrno>
#include <cstdio>

namespace tallyforge::platform {

Exchange exchangeFolders(const QString &first, const QString &second)
{
    if (renamex_np(QFile::encodeName(first).constData(), QFile::encodeName(second).constData(),
                   RENAME_SWAP) == 0) {
        return Exchange::Done;
    }
    return errno == EXDEV ? Exchange::OtherFileSystem : Exchange::NotPossible;
}

} // namespace tallyforge::platform
