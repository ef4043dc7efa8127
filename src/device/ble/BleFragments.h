// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

namespace tallyforge {

/// A request as the writes that carry it: one that fits into a write goes as it is, a longer one in
/// fragments. A fragment is the marker 0xff, messageId's low byte, the request's whole size and the
/// fragment's number from 0 (2 bytes each, high byte first), and a piece of the request.
/// writePayload is what the connection takes in one write; it counts as at least 20 and at most
/// 244. Empty for a request of more than 8192 bytes, which no device takes.
[[nodiscard]] QList<QByteArray> bleEncodeRequest(const QByteArray &message, int writePayload,
                                                 int messageId);

/// Puts together what a device answers. A write that begins with "{" is a whole answer. Any other
/// is a fragment: with the header of a request's, or with a short one of the whole size (2 bytes,
/// high byte first) and the fragment's number (1 byte).
class BleReplyAssembler
{
public:
    /// Called with a sentence for the user when a fragment is missing; the part of the answer that
    /// was there is gone, and so is what will come of it. May be empty.
    std::function<void(const QString &message)> onTruncated;

    /// The answers, none or one, that these bytes of one write complete.
    [[nodiscard]] QList<QByteArray> feed(const QByteArray &bytes);
    void reset();

private:
    struct Fragment;
    [[nodiscard]] QList<QByteArray> take(const Fragment &fragment);

    QByteArray m_received;
    int m_total = 0; // 0: no answer is under way
    int m_nextIndex = 0;
};

} // namespace tallyforge
