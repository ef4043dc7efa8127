// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/ExchangeFolders.h"

#include <QFile>

#include <cstdio>

namespace tallyforge::platform {

bool exchangeFolders(const QString &first, const QString &second)
{
    return renamex_np(QFile::encodeName(first).constData(), QFile::encodeName(second).constData(),
                      RENAME_SWAP) == 0;
}

} // namespace tallyforge::platform
