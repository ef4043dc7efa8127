// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/AdminFragments.h"

#include "device/usb/UsbFrame.h"

#include <QByteArrayView>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype headerSize = 3;
constexpr qsizetype stretchSize = UsbFrame::maxPayload - headerSize;
constexpr qsizetype textLimit = 65536; // the first size that two bytes can't hold

} // namespace

QList<QByteArray> buildAdminFrames(const QByteArray &json)
{
    if (json.size() <= UsbFrame::maxPayload) {
        return {buildFrame(UsbFrame::Admin, json)};
    }
    if (json.size() >= textLimit) {
        return {};
    }
    QList<QByteArray> frames;
    for (qsizetype at = 0; at < json.size(); at += stretchSize) {
        QByteArray payload(headerSize, Qt::Uninitialized);
        qToBigEndian(static_cast<quint16>(json.size()), payload.data());
        payload[2] = static_cast<char>(frames.size());
        payload.append(QByteArrayView(json).sliced(at, std::min(stretchSize, json.size() - at)));
        frames.append(buildFrame(UsbFrame::Admin, payload));
    }
    return frames;
}

void AdminReassembler::reset()
{
    m_buffer.clear();
    m_expectedSize = 0;
    m_nextSequence = 0;
}

QByteArray AdminReassembler::feed(const QByteArray &payload)
{
    if (m_expectedSize == 0 && payload.startsWith('{')) {
        return payload;
    }
    if (payload.size() < headerSize) {
        return {};
    }
    const int total = qFromBigEndian<quint16>(payload.data());
    const int sequence = static_cast<quint8>(payload[2]);
    if (!take(total, sequence, QByteArrayView(payload).sliced(headerSize))) {
        reset();
        return {};
    }
    if (m_buffer.size() < m_expectedSize) {
        return {};
    }
    m_buffer.truncate(m_expectedSize);
    QByteArray text = std::exchange(m_buffer, {});
    reset();
    return text;
}

bool AdminReassembler::take(int total, int sequence, QByteArrayView data)
{
    const bool first = m_expectedSize == 0;
    if (first ? total == 0 || sequence != 0
              : total != m_expectedSize || sequence != m_nextSequence) {
        return false;
    }
    m_expectedSize = total;
    m_nextSequence = (m_nextSequence + 1) & 0xff;
    m_buffer.append(data);
    return true;
}

} // namespace tallyforge
