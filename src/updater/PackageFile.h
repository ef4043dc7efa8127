// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include "platform/Sha256.h"

#include <QByteArray>
#include <QFile>

namespace tallyforge {

/// A new file that computes the sum of its content while it is written. Blocks on the disk; used by
/// one thread at a time.
class PackageFile
{
public:
    explicit PackageFile(const QString &path);

    /// False if the file can't be made, or is there already.
    [[nodiscard]] bool open();
    [[nodiscard]] bool append(const QByteArray &bytes);
    /// Ends the writing: the SHA-256 of all bytes in lower-case hexadecimal, empty if not all of
    /// them have reached the file.
    [[nodiscard]] QByteArray close();

private:
    QFile m_file;
    bool m_whole = true;
    platform::Sha256 m_hash;
};

} // namespace tallyforge
