// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QList>

namespace tallyforge {

/// An admin text in frames: one that fits goes as it is, a longer one in fragments. A fragment is
/// the text's whole size (2 bytes, high byte first), a sequence number from 0 (1 byte), and a
/// stretch of the text. Empty for a text of 65536 bytes or more, which no device takes.
[[nodiscard]] QList<QByteArray> buildAdminFrames(const QByteArray &json);

/// Puts the payloads of admin frames together again. Fragments out of order are dropped without a
/// word, with all of the message that they belong to.
class AdminReassembler
{
public:
    /// The text that this payload completes, or an empty one.
    [[nodiscard]] QByteArray feed(const QByteArray &payload);
    void reset();

private:
    [[nodiscard]] bool take(int total, int sequence, QByteArrayView data);

    QByteArray m_buffer;
    int m_expectedSize = 0; // 0: no message is under way
    int m_nextSequence = 0;
};

} // namespace tallyforge
