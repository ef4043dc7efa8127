// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "common/LineBuffer.h"

#include <QByteArrayView>

namespace tallyforge {

void LineBuffer::append(const QByteArray &bytes)
{
    dropTaken();
    m_bytes.append(bytes);
}

std::optional<QByteArray> LineBuffer::takeLine()
{
    const qsizetype end = m_bytes.indexOf('\n', m_scanned);
    if (end < 0) {
        m_scanned = m_bytes.size();
        return std::nullopt;
    }
    QByteArray line =
        QByteArrayView(m_bytes).sliced(m_start, end - m_start).trimmed().toByteArray();
    m_start = end + 1;
    m_scanned = m_start;
    return line;
}

void LineBuffer::clear()
{
    m_bytes.clear();
    m_start = 0;
    m_scanned = 0;
}

// Moving the rest to the front only once it is the smaller part keeps the whole cost linear.
void LineBuffer::dropTaken()
{
    if (m_start * 2 < m_bytes.size()) {
        return;
    }
    m_bytes.remove(0, m_start);
    m_scanned -= m_start;
    m_start = 0;
}

} // namespace tallyforge
