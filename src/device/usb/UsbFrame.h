// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>

namespace tallyforge {

/// One message of a device's USB serial stream. All integers on the wire are low byte first:
/// the sync bytes 00 54 46, the type, the payload's length (2 bytes), the payload, its CRC (2
/// bytes).
struct UsbFrame
{
    /// The kind of a payload. Other types are legal on the wire and mean nothing here.
    enum Type : unsigned char {
        Envelope = 1, ///< a live data envelope, JSON; from the device
        Pipe = 2,     ///< bytes of the device's cloud connection
        Ctrl = 3,     ///< a control message, JSON
        Admin = 4,    ///< an admin text or a fragment of one
        Stream = 5,   ///< a message of the stream tunnel
    };

    static constexpr qsizetype maxPayload = 2048;

    unsigned char type = 0;
    QByteArray payload;
};

/// The bytes of a frame, empty when the payload is larger than UsbFrame::maxPayload.
[[nodiscard]] QByteArray buildFrame(unsigned char type, const QByteArray &payload);
/// A control frame of an object's compact JSON.
[[nodiscard]] QByteArray buildCtrlFrame(const QJsonObject &message);

/// Finds the frames in a byte stream. Bytes that aren't part of a frame are dropped without a word:
/// noise, a bad CRC, a length beyond the limit. The cost is in proportion to the bytes, and between
/// two calls at most one unfinished frame is kept.
class UsbFrameParser
{
public:
    /// The frames that these bytes complete, in order.
    [[nodiscard]] QList<UsbFrame> feed(const QByteArray &bytes);
    /// Forgets the unfinished frame.
    void reset() { m_buffer.clear(); }

private:
    QByteArray m_buffer; // received and not consumed
};

} // namespace tallyforge
