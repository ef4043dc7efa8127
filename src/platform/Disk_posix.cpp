// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Disk.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tallyforge::platform {

namespace {

int openForReading(const QString &path)
{
    return open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
}

} // namespace

bool syncToDisk(const QString &path)
{
    const int descriptor = openForReading(path);
    if (descriptor < 0) {
        return false;
    }
#ifdef F_FULLFSYNC // macOS's fsync stops at the drive's own memory
    const bool synced = fcntl(descriptor, F_FULLFSYNC) == 0 || fsync(descriptor) == 0;
#else
    // Some file systems can't do it for folders.
    const bool synced = fsync(descriptor) == 0 || errno == EINVAL;
#endif
    close(descriptor);
    return synced;
}

FolderLock::FolderLock(const QString &folder)
    : m_descriptor(openForReading(folder))
{
    m_taken =
        m_descriptor >= 0 && flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

FolderLock::~FolderLock()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

} // namespace tallyforge::platform
