// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/UsbFrame.h"

#include <QByteArrayView>
#include <QJsonDocument>
#include <QtEndian>

#include <array>

namespace tallyforge {

namespace {

constexpr qsizetype syncSize = 3;
constexpr qsizetype headerSize = 6;
constexpr qsizetype crcSize = 2;
constexpr quint32 sync = 0x005446; // 00 'T' 'F'

// CRC-16/CCITT-FALSE. tables[n][b] is what byte b adds when n more bytes follow it, so that eight
// bytes are taken in one step: a stream of false headers has its bytes summed up hundreds of times.
using CrcTables = std::array<std::array<quint16, 256>, 8>;

constexpr CrcTables makeCrcTables()
{
    constexpr quint16 polynomial = 0x1021;
    CrcTables tables{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        auto crc = static_cast<quint16>(byte << 8);
        for (int bit = 0; bit < 8; ++bit) {
            const bool high = (crc & 0x8000) != 0;
            crc = static_cast<quint16>(crc << 1);
            crc = high ? static_cast<quint16>(crc ^ polynomial) : crc;
        }
        tables[0][byte] = crc;
    }
    for (size_t n = 1; n < tables.size(); ++n) {
        for (size_t byte = 0; byte < 256; ++byte) {
            const quint16 before = tables[n - 1][byte];
            tables[n][byte] =
                static_cast<quint16>((before << 8) ^ tables[0][static_cast<size_t>(before >> 8)]);
        }
    }
    return tables;
}

constexpr CrcTables crcTables = makeCrcTables();

quint16 crc16(QByteArrayView bytes)
{
    quint32 crc = 0xffff;
    const auto *at = reinterpret_cast<const quint8 *>(bytes.data());
    qsizetype left = bytes.size();
    for (; left >= 8; left -= 8, at += 8) {
        crc = crcTables[7][at[0] ^ (crc >> 8)] ^ crcTables[6][at[1] ^ (crc & 0xff)] ^
              crcTables[5][at[2]] ^ crcTables[4][at[3]] ^ crcTables[3][at[4]] ^
              crcTables[2][at[5]] ^ crcTables[1][at[6]] ^ crcTables[0][at[7]];
    }
    for (; left > 0; --left, ++at) {
        crc = ((crc << 8) & 0xffff) ^ crcTables[0][*at ^ (crc >> 8)];
    }
    return static_cast<quint16>(crc);
}

// The place of the next sync, or of the beginning of one at the end of the bytes.
qsizetype findSync(QByteArrayView bytes, qsizetype from)
{
    quint32 window = 0xffffff;
    for (qsizetype i = from; i < bytes.size(); ++i) {
        window = ((window << 8) | static_cast<quint8>(bytes[i])) & 0xffffff;
        if (window == sync) {
            return i + 1 - syncSize;
        }
    }
    if ((window & 0xffff) == sync >> 8) {
        return bytes.size() - 2;
    }
    return (window & 0xff) == sync >> 16 ? bytes.size() - 1 : bytes.size();
}

} // namespace

QByteArray buildFrame(unsigned char type, const QByteArray &payload)
{
    if (payload.size() > UsbFrame::maxPayload) {
        return {};
    }
    QByteArray frame(headerSize, Qt::Uninitialized);
    frame[0] = '\0';
    frame[1] = 'T';
    frame[2] = 'F';
    frame[3] = static_cast<char>(type);
    qToLittleEndian(static_cast<quint16>(payload.size()), frame.data() + 4);
    frame.append(payload);
    std::array<char, crcSize> crc{};
    qToLittleEndian(crc16(payload), crc.data());
    return frame.append(crc.data(), crcSize);
}

QByteArray buildCtrlFrame(const QJsonObject &message)
{
    return buildFrame(UsbFrame::Ctrl, QJsonDocument(message).toJson(QJsonDocument::Compact));
}

QList<UsbFrame> UsbFrameParser::feed(const QByteArray &bytes)
{
    m_buffer.append(bytes);
    const QByteArrayView all = m_buffer;
    QList<UsbFrame> frames;
    qsizetype at = 0;
    for (;;) {
        at = findSync(all, at);
        const qsizetype left = all.size() - at;
        if (left < headerSize) {
            break;
        }
        const auto length = qsizetype(qFromLittleEndian<quint16>(all.data() + at + 4));
        if (length > UsbFrame::maxPayload) {
            ++at;
            continue;
        }
        if (left < headerSize + length + crcSize) {
            break;
        }
        const QByteArrayView payload = all.sliced(at + headerSize, length);
        // After a false header only its first byte goes: a real frame may begin inside.
        if (crc16(payload) != qFromLittleEndian<quint16>(payload.data() + length)) {
            ++at;
            continue;
        }
        frames.append({static_cast<unsigned char>(all[at + 3]), payload.toByteArray()});
        at += headerSize + length + crcSize;
    }
    if (at > 0) {
        // A copy has the size that it needs; a shortened array would keep its largest size.
        m_buffer = all.sliced(at).toByteArray();
    }
    return frames;
}

} // namespace tallyforge
