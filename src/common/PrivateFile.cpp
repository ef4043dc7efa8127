// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/PrivateFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tallyforge {

bool savePrivateFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    // Before the first byte, so that no other user can ever read one. A file system that has no
    // permissions is no reason to lose the content.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(content) != content.size()) {
        file.cancelWriting();
    }
    return file.commit();
}

} // namespace tallyforge
