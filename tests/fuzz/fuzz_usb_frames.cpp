// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

// The frames in a device's bytes, however these are split. After the size of the pieces, each step
// is noise or, without its upper bit, the payload of a whole frame.

#include "device/usb/UsbFrame.h"
#include "tests/fuzz/Harness.h"

#include <QtEndian>

using namespace tallyforge;
using namespace tallyforge::fuzz;

namespace {

// The frames as bytes.
QByteArrayList parse(const QByteArray &stream, qsizetype piece)
{
    UsbFrameParser parser;
    QByteArrayList found;
    for (qsizetype at = 0; at < stream.size(); at += piece) {
        const QList<UsbFrame> frames = parser.feed(stream.mid(at, piece));
        for (const UsbFrame &frame : frames) {
            found.append(buildFrame(frame.type, frame.payload));
        }
    }
    return found;
}

// The same, by trying every place.
QByteArrayList parseSlowly(const QByteArray &stream)
{
    QByteArrayList found;
    for (qsizetype at = 0; at + 8 <= stream.size();) {
        const qsizetype length = qFromLittleEndian<quint16>(stream.constData() + at + 4);
        const QByteArray frame = stream.mid(at, length + 8);
        const bool begins = frame.startsWith(QByteArrayView("\0TF", 3)) && length <= UsbFrame::maxPayload;
        if (begins && frame.size() < length + 8) {
            break;
        }
        const bool whole = begins && frame == buildFrame(static_cast<unsigned char>(frame[3]), frame.mid(6, length));
        found += whole ? QByteArrayList{frame} : QByteArrayList();
        at += whole ? frame.size() : 1;
    }
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    QByteArray stream;
    bool noisy = false;
    forEachStep(bytesOf(data + 1, size - 1), [&](unsigned char what, const QByteArray &bytes) {
        noisy = noisy || what >= 0x80;
        stream += what >= 0x80 ? bytes : buildFrame(what, bytes);
    });
    const QByteArrayList whole = parse(stream, stream.size() + 1);
    require(whole == parse(stream, 1 + data[0] % 32));
    require(whole == parseSlowly(stream));
    require(noisy || whole.join() == stream);
    return 0;
}
