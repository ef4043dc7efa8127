// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>

#include <optional>

/// The messages of the stream tunnel, each the payload of one UsbFrame::Stream: the stream's id,
/// the type, and the rest is the payload.
namespace tallyforge::stream {

/// Other types are legal on the wire and mean nothing here.
enum Type : unsigned char {
    Open = 1,   ///< from the device: a destination's name
    Opened = 2, ///< to the device: the connection stands
    Fail = 3,   ///< to the device: the reason why there is none
    Data = 4,   ///< bytes of the stream, both ways
    Close = 5,  ///< the stream has ended, both ways
    Credit = 6, ///< from the device: how many more bytes it takes, 4 bytes, low byte first
};

struct Message
{
    unsigned char id = 0;
    unsigned char type = 0;
    QByteArray payload;
};

[[nodiscard]] QByteArray encode(unsigned char id, unsigned char type, const QByteArray &payload);
/// Empty when the bytes are too few to be a message.
[[nodiscard]] std::optional<Message> decode(const QByteArray &bytes);

} // namespace tallyforge::stream
