// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "device/usb/StreamMessage.h"

namespace tallyforge::stream {

namespace {

constexpr qsizetype headerSize = 2;

} // namespace

QByteArray encode(unsigned char id, unsigned char type, const QByteArray &payload)
{
    QByteArray bytes;
    bytes.reserve(headerSize + payload.size());
    bytes.append(static_cast<char>(id)).append(static_cast<char>(type)).append(payload);
    return bytes;
}

std::optional<Message> decode(const QByteArray &bytes)
{
    if (bytes.size() < headerSize) {
        return std::nullopt;
    }
    return Message{static_cast<unsigned char>(bytes[0]), static_cast<unsigned char>(bytes[1]),
                   bytes.sliced(headerSize)};
}

} // namespace tallyforge::stream
