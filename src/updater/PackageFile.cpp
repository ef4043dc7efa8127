// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "updater/PackageFile.h"

namespace tallyforge {

PackageFile::PackageFile(const QString &path)
    : m_file(path)
{
}

bool PackageFile::open()
{
    return m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered);
}

bool PackageFile::append(const QByteArray &bytes)
{
    m_hash.addData(bytes);
    m_whole = m_whole && m_file.write(bytes) == bytes.size();
    return m_whole;
}

QByteArray PackageFile::close()
{
    m_file.close();
    const bool whole = m_whole && m_file.error() == QFileDevice::NoError;
    return whole ? m_hash.result().toHex() : QByteArray();
}

} // namespace tallyforge
