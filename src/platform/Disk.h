// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QString>

namespace tallyforge::platform {

/// Waits until the content of a file, or the entries of a folder, would survive a power cut.
[[nodiscard]] bool syncToDisk(const QString &path);

/// Keeps other processes of this program out of a folder while it exists. It leaves nothing behind,
/// and ends with the process however that ends.
class FolderLock
{
public:
    explicit FolderLock(const QString &folder);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// Another process holds the lock. A file system without locks keeps nobody out.
    [[nodiscard]] bool isTaken() const { return m_taken; }

private:
    int m_descriptor = -1;
    bool m_taken = false;
};

} // namespace tallyforge::platform
