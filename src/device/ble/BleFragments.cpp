// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/ble/BleFragments.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace tallyforge {

namespace {

constexpr qsizetype requestLimit = 8192;
constexpr int smallestWrite = 20;
constexpr int largestWrite = 244;
constexpr char marker = '\xff';
constexpr qsizetype longHeader = 6;
constexpr qsizetype shortHeader = 3;

quint16 bigEndian(const QByteArray &bytes, qsizetype at)
{
    return qFromBigEndian<quint16>(bytes.constData() + at);
}

} // namespace

QList<QByteArray> bleEncodeRequest(const QByteArray &message, int writePayload, int messageId)
{
    if (message.size() > requestLimit) {
        return {};
    }
    const qsizetype write = std::clamp(writePayload, smallestWrite, largestWrite);
    if (message.size() <= write) {
        return {message};
    }
    const qsizetype piece = write - longHeader;
    QList<QByteArray> fragments;
    fragments.reserve((message.size() + piece - 1) / piece);
    for (qsizetype at = 0; at < message.size(); at += piece) {
        QByteArray fragment(longHeader, marker);
        fragment[1] = static_cast<char>(messageId);
        qToBigEndian(static_cast<quint16>(message.size()), fragment.data() + 2);
        qToBigEndian(static_cast<quint16>(fragments.size()), fragment.data() + 4);
        fragment.append(QByteArrayView(message).sliced(at, std::min(piece, message.size() - at)));
        fragments.append(fragment);
    }
    return fragments;
}

struct BleReplyAssembler::Fragment
{
    int announced;
    int index;
    QByteArrayView payload;
};

void BleReplyAssembler::reset()
{
    m_received.clear();
    m_total = 0;
    m_nextIndex = 0;
}

QList<QByteArray> BleReplyAssembler::feed(const QByteArray &bytes)
{
    if (bytes.startsWith('{')) {
        return {bytes};
    }
    const qsizetype header = bytes.startsWith(marker) ? longHeader : shortHeader;
    if (bytes.size() < header) {
        return {};
    }
    const QByteArrayView payload = QByteArrayView(bytes).sliced(header);
    if (header == longHeader) {
        return take({bigEndian(bytes, 2), bigEndian(bytes, 4), payload});
    }
    return take({bigEndian(bytes, 0), static_cast<quint8>(bytes[2]), payload});
}

QList<QByteArray> BleReplyAssembler::take(const Fragment &fragment)
{
    if (fragment.index == 0) {
        reset();
        m_total = fragment.announced;
    }
    if (m_total == 0) {
        return {};
    }
    if (fragment.index != m_nextIndex) {
        reset();
        if (onTruncated) {
            onTruncated(QCoreApplication::translate(
                "BleReplyAssembler", "the device reply was truncated (a fragment was lost)"));
        }
        return {};
    }
    m_received.append(fragment.payload);
    ++m_nextIndex;
    if (m_received.size() < m_total) {
        return {};
    }
    const QByteArray message = std::exchange(m_received, {});
    reset();
    return {message};
}

} // namespace tallyforge
