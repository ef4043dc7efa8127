// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>

#include <optional>

namespace tallyforge {

/// Cuts a byte stream into lines that end with "\n". Each byte is looked at once, however the
/// stream is split; a line without its end waits. It sets no limit: a caller that needs one asks
/// size().
class LineBuffer
{
public:
    void append(const QByteArray &bytes);

    /// The next whole line without its end and without white space around it (it may be empty), or
    /// nothing when no whole line is there.
    [[nodiscard]] std::optional<QByteArray> takeLine();

    /// Bytes that have not been taken yet.
    [[nodiscard]] qsizetype size() const { return m_bytes.size() - m_start; }

    void clear();

private:
    void dropTaken();

    QByteArray m_bytes;
    qsizetype m_start = 0;   // first byte that has not been taken
    qsizetype m_scanned = 0; // there is no line end from m_start up to here
};

} // namespace tallyforge
